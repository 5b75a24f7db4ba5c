#include "vaultcore/container/derivation.h"

#include "vaultcore/container/crypto.h"
#include "vaultcore/crypto_library.h"

#include <new>
#include <system_error>
#include <thread>
#include <vector>

namespace VaultCore
{
namespace
{

struct DerivationCloser
{
    void operator()(gcry_kdf_handle* derivation) const { gcry_kdf_close(derivation); }
};

void checkDerivation(gcry_error_t error)
{
    if (gcry_err_code(error) == GPG_ERR_ENOMEM)
        throw std::bad_alloc();
    checkCrypto(error);
}

/// Lets the lanes of a derivation be worked on at the same time, which the one who tries passwords does as well.
class LaneThreads
{
public:
    explicit LaneThreads(std::size_t lanes) { threads_.reserve(lanes); }

    gcry_kdf_thread_ops_t operations() { return {this, &LaneThreads::start, &LaneThreads::waitForAll}; }

private:
    static int start(void* self, gcry_kdf_job_fn_t work, void* lane)
    {
        try
        {
            static_cast<LaneThreads*>(self)->threads_.emplace_back(work, lane);
        }
        catch (const std::system_error&)
        {
            work(lane); // there is no thread to be had
        }
        return 0;
    }

    static int waitForAll(void* self)
    {
        static_cast<LaneThreads*>(self)->threads_.clear();
        return 0;
    }

    std::vector<std::jthread> threads_;
};

} // namespace

bool withinLimits(const Argon2Parameters& parameters)
{
    if (parameters.passes == 0 || parameters.passes > LargestArgon2.passes)
        return false;
    if (parameters.lanes == 0 || parameters.lanes > LargestArgon2.lanes)
        return false;
    return parameters.memoryKiB >= LeastKiBPerLane * parameters.lanes &&
           parameters.memoryKiB <= LargestArgon2.memoryKiB;
}

SecureBytes deriveFromPassword(ByteView password, ByteView salt, const Argon2Parameters& parameters)
{
    if (!prepareCryptoLibrary())
        checkCrypto(gcry_error(GPG_ERR_NOT_INITIALIZED));
    const std::array<unsigned long, 4> numbers{DerivedKeySize, parameters.passes, parameters.memoryKiB,
                                               parameters.lanes};
    gcry_kdf_hd_t handle = nullptr;
    checkDerivation(gcry_kdf_open(&handle, GCRY_KDF_ARGON2, GCRY_KDF_ARGON2ID, numbers.data(), numbers.size(),
                                  password.data(), password.size(), salt.data(), salt.size(), nullptr, 0, nullptr, 0));
    const std::unique_ptr<gcry_kdf_handle, DerivationCloser> derivation(handle);
    LaneThreads threads(parameters.lanes);
    const gcry_kdf_thread_ops_t operations = threads.operations();
    checkDerivation(gcry_kdf_compute(handle, &operations));
    SecureBytes key(DerivedKeySize);
    checkDerivation(gcry_kdf_final(handle, key.size(), key.bytes().data()));
    return key;
}

} // namespace VaultCore
