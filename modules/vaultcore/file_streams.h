#pragma once

#include "vaultcore/container/container.h"
#include "vaultcore/content_digest.h"
#include "vaultcore/file_system.h"

#include <optional>

namespace VaultCore
{

/// Bytes read or written between two reports, and so between two chances to cancel.
inline constexpr std::size_t ContentChunk = std::size_t{1} << 20;

/// An opened file as a container's source.
class FileSource final : public IByteSource
{
public:
    explicit FileSource(IReadFile& file) : file_(file) {}
    std::size_t read(std::span<std::uint8_t> bytes) override
    {
        const std::size_t count = file_.read(bytes);
        taken_ += count;
        return count;
    }
    /// Bytes read so far.
    std::uint64_t taken() const { return taken_; }

private:
    IReadFile& file_;
    std::uint64_t taken_ = 0;
};

/// A file in the making as a container's sink.
class FileSink final : public IByteSink
{
public:
    /// `digest`, which may be null, gets every byte too.
    FileSink(INewFile& file, ContentDigest* digest) : file_(file), digest_(digest) {}
    void write(std::span<const std::uint8_t> bytes) override
    {
        if (digest_ != nullptr)
            digest_->add(bytes);
        file_.write(bytes);
    }

private:
    INewFile& file_;
    ContentDigest* digest_;
};

} // namespace VaultCore
