#include "vaultcore/content_digest.h"

#include "vaultcore/crypto_library.h"
#include "vaultcore/file_failure.h"

#include <algorithm>
#include <gcrypt.h>

namespace VaultCore
{

void ContentDigest::Closer::operator()(gcry_md_handle* digest) const
{
    gcry_md_close(digest);
}

ContentDigest::ContentDigest()
{
    gcry_md_hd_t digest = nullptr;
    if (!prepareCryptoLibrary() || gcry_md_open(&digest, GCRY_MD_SHA256, 0) != 0)
        throw FileFailure(FailureCause::NoMemory, 0);
    digest_.reset(digest);
}

void ContentDigest::add(std::span<const std::uint8_t> bytes)
{
    gcry_md_write(digest_.get(), bytes.data(), bytes.size());
}

ContentDigest::Value ContentDigest::finish()
{
    Value value{};
    std::copy_n(gcry_md_read(digest_.get(), GCRY_MD_SHA256), value.size(), value.begin());
    return value;
}

std::string hexOf(const ContentDigest::Value& value)
{
    constexpr char Digits[] = "0123456789abcdef";
    std::string text;
    for (const std::uint8_t byte : value)
    {
        text += Digits[byte >> 4];
        text += Digits[byte & 15];
    }
    return text;
}

} // namespace VaultCore
