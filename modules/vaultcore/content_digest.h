#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

struct gcry_md_handle;

namespace VaultCore
{

/// SHA-256 of content that comes in pieces. Throws `FileFailure` when libgcrypt refuses.
class ContentDigest
{
public:
    using Value = std::array<std::uint8_t, 32>;

    ContentDigest();
    void add(std::span<const std::uint8_t> bytes);
    /// Once, at the end.
    Value finish();

private:
    struct Closer
    {
        void operator()(gcry_md_handle* digest) const;
    };
    std::unique_ptr<gcry_md_handle, Closer> digest_;
};

std::string hexOf(const ContentDigest::Value& value);

} // namespace VaultCore
