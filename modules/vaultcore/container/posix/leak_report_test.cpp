#include "vaultcore/crypto_library.h"

#include <cstdint>
#include <fstream>
#include <gcrypt.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>

extern "C" [[gnu::weak]] void __lsan_register_root_region(const void* begin, std::size_t size);

namespace VaultCore
{
namespace
{

struct Closer
{
    void operator()(void* memory) const { gcry_free(memory); }
};

/// libgcrypt keeps the state of its noise source, made with the first RSA key, in its locked memory. The leak checker
/// of a sanitizer build does not look there, and takes what hangs on it (128 KiB) for lost. So it is told to look
/// there, and nothing that leaks by way of libgcrypt is left out.
class LockedMemoryIsLookedAt final : public testing::Environment
{
public:
    void SetUp() override
    {
        if (__lsan_register_root_region == nullptr)
            return;
        ASSERT_TRUE(prepareCryptoLibrary());
        const std::unique_ptr<void, Closer> inside(gcry_malloc_secure(1));
        const auto address = reinterpret_cast<std::uintptr_t>(inside.get());
        std::ifstream maps("/proc/self/maps");
        for (std::string line; std::getline(maps, line);)
        {
            std::size_t dash = 0;
            const std::uintptr_t begin = std::stoull(line, &dash, 16);
            const std::uintptr_t end = std::stoull(line.substr(dash + 1), nullptr, 16);
            if (begin <= address && address < end)
                return __lsan_register_root_region(reinterpret_cast<const void*>(begin), end - begin);
        }
        FAIL() << "libgcrypt's locked memory is nowhere";
    }
};

[[maybe_unused]] const testing::Environment* const lookedAt =
    testing::AddGlobalTestEnvironment(new LockedMemoryIsLookedAt);

} // namespace
} // namespace VaultCore
