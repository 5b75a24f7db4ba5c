#include "vaultcore/container/container.h"
#include "vaultcore/container/crypto.h"
#include "vaultcore/container/key_material.h"

#include <deque>

namespace VaultCore
{
namespace
{

/// Enough for the keys of one job; the oldest is forgotten first.
constexpr std::size_t MostEntries = 64;

void add(Bytes& bytes, ByteView more)
{
    std::array<std::uint8_t, 8> size{};
    ByteWriter(size).u64(more.size());
    bytes.insert(bytes.end(), size.begin(), size.end());
    bytes.insert(bytes.end(), more.begin(), more.end());
}

class KeyedCache final : public DerivationCache
{
public:
    KeyedCache() { fillRandom(markKey_.bytes()); }

    const SecureBytes& remember(const Key& key, ByteView salt, const std::function<SecureBytes()>& derive) override
    {
        const Digest mark = markOf(key.material(), salt);
        for (const Entry& entry : entries_)
            if (sameSecret(entry.mark, mark))
                return entry.derived;
        SecureBytes derived = derive();
        if (entries_.size() == MostEntries)
            entries_.pop_front();
        return entries_.emplace_back(mark, std::move(derived)).derived;
    }

private:
    struct Entry
    {
        Entry(const Digest& entryMark, SecureBytes bytes) : mark(entryMark), derived(std::move(bytes)) {}
        Digest mark;
        SecureBytes derived;
    };

    /// Names a key and its salt without keeping the key.
    Digest markOf(const KeyMaterial& key, ByteView salt) const
    {
        Digest secret = hmacSha256(markKey_.bytes(), key.secret.bytes());
        Bytes text;
        add(text, secret);
        add(text, key.rsa.modulus);
        add(text, salt);
        wipe(secret);
        const Digest mark = hmacSha256(markKey_.bytes(), text);
        wipe(text);
        return mark;
    }

    SecureBytes markKey_{DigestSize};
    std::deque<Entry> entries_;
};

} // namespace

std::unique_ptr<DerivationCache> createDerivationCache()
{
    return std::make_unique<KeyedCache>();
}

} // namespace VaultCore
