#pragma once

#include "vaultcore/content_digest.h"
#include "vaultcore/file_system.h"
#include "vaultcore/package/package_reader.h"
#include "vaultcore/package/package_writer.h"

namespace VaultCore
{

/// An opened file as a package's source.
class PackageFileSource final : public IPackageSource
{
public:
    explicit PackageFileSource(IReadFile& file) : file_(file), size_(file.info().size) {}
    std::uint64_t size() override { return size_; }
    std::size_t read(std::uint64_t offset, std::span<std::uint8_t> bytes) override
    {
        file_.seek(offset);
        return file_.read(bytes);
    }

private:
    IReadFile& file_;
    std::uint64_t size_;
};

/// A file in the making as a package's sink.
class PackageFileSink final : public IPackageSink
{
public:
    explicit PackageFileSink(INewFile& file) : file_(file) {}
    void write(std::span<const std::uint8_t> bytes) override
    {
        if (digest_ != nullptr)
            digest_->add(bytes);
        file_.write(bytes);
        size_ += bytes.size();
    }
    void cutTo(std::uint64_t size) override
    {
        // Also when no more was counted: a failed write may have left some.
        file_.cutTo(size);
        size_ = size;
    }
    std::uint64_t size() const { return size_; }
    /// Gets every byte from now on; null for none.
    void setDigest(ContentDigest* digest) { digest_ = digest; }

private:
    INewFile& file_;
    ContentDigest* digest_ = nullptr;
    std::uint64_t size_ = 0;
};

} // namespace VaultCore
