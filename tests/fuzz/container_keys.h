#pragma once

#include "fuzz/reader.h"
#include "vaultcore/container/derivation.h"
#include "vaultcore/container/golden_data.h"
#include "vaultcore/container/key_file.h"
#include "vaultcore/container/slot.h"
#include "vaultcore/container/testing_container.h"
#include "vaultcore/container/testing_hex.h"

#include <map>

// What the readers of containers share: the keys that they try, and a limit to what a try may cost.

namespace Fuzz
{

/// A derivation that is within the limits of the engine, and would take too long here.
struct TooCostly
{
};

/// Derives only what is cheap, and that only once: what comes out depends on nothing but the key and the input.
class CheapDerivations final : public VaultCore::DerivationCache
{
public:
    const VaultCore::SecureBytes& remember(const VaultCore::Key& key, ByteView input,
                                           const std::function<VaultCore::SecureBytes()>& derive) override
    {
        static std::map<std::pair<int, Bytes>, VaultCore::SecureBytes> known;
        const std::pair name(key.material().type, Bytes(input.begin(), input.end()));
        const auto found = known.find(name);
        if (found != known.end())
            return found->second;
        check(input);
        if (known.size() >= MostKnown)
            known.clear();
        return known.emplace(name, derive()).first->second;
    }

private:
    static constexpr std::size_t MostKnown = 64;
    static constexpr std::uint64_t MostKiB = 512;
    static constexpr std::uint32_t MostLanes = 4;
    /// Of the changed RSA slots, each of which takes many milliseconds and ends the same way.
    static constexpr unsigned OneOf = 32;

    static void check(ByteView input)
    {
        VaultCore::ByteReader reader(input);
        const auto kind = static_cast<VaultCore::SlotKind>(reader.u16());
        reader.take(sizeof(VaultCore::Slot::salt));
        const std::uint32_t memory = reader.u32(), passes = reader.u32(), lanes = reader.u32();
        if (kind == VaultCore::SlotKind::Rsa && input.back() % OneOf != 0 && !isGolden(input))
            throw TooCostly();
        if (kind != VaultCore::SlotKind::Password)
            return;
        expect(VaultCore::withinLimits({memory, passes, lanes}), "nothing is derived beyond the limits");
        if (std::uint64_t{memory} * passes > MostKiB || lanes > MostLanes)
            throw TooCostly();
    }

    /// Is the sealed key at its end that of the container which opens?
    static bool isGolden(ByteView input)
    {
        static const Bytes golden = VaultCore::hex(VaultCore::GoldenRsa);
        return std::search(golden.begin(), golden.end(), input.end() - 32, input.end()) != golden.end();
    }
};

/// A symmetric key, a password and an RSA pair, from the cheapest to the dearest.
inline const std::vector<std::unique_ptr<VaultCore::Key>>& containerKeys()
{
    static const std::vector<std::unique_ptr<VaultCore::Key>> keys = []
    {
        std::vector<std::unique_ptr<VaultCore::Key>> made;
        made.push_back(VaultCore::symmetricKey());
        made.push_back(VaultCore::createPasswordKey(L"swordfish"));
        made.push_back(VaultCore::createKey(VaultCore::decodeKeyFile(VaultCore::hex(VaultCore::GoldenKeyFile))));
        return made;
    }();
    return keys;
}

/// Gives the bytes and sees that no more are asked for at once than the format lets a part have.
class MeasuredSource final : public VaultCore::IByteSource
{
public:
    explicit MeasuredSource(ByteView bytes) : source_(bytes) {}

    std::size_t read(std::span<std::uint8_t> out) override
    {
        constexpr std::size_t LargestHeadPart = (std::size_t{64} + 16) * 1024 + 16;
        constexpr std::size_t LargestChunkPart = (std::size_t{1} << 20) + 32;
        expect(out.size() <= (isUnlocked_ ? LargestChunkPart : LargestHeadPart), "no part is larger than its limit");
        return source_.read(out);
    }
    void setUnlocked() { isUnlocked_ = true; }

private:
    VaultCore::MemorySource source_;
    bool isUnlocked_ = false;
};

} // namespace Fuzz
