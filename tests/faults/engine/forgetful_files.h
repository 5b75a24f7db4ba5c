#pragma once

#include "engine/forgetful_file_system.h"

#include <algorithm>

// The open files of the file system in memory; for forgetful_file_system.cpp alone.

namespace Faults
{

class ForgetfulFileSystem::ReadFile final : public VaultCore::IReadFile
{
public:
    ReadFile(ForgetfulFileSystem& owner, const std::string& path) : owner_(owner), file_(owner.require(path)) {}

    VaultCore::FileInfo info() override
    {
        const std::lock_guard lock(owner_.mutex_);
        return owner_.infoOf(*file_);
    }
    std::size_t read(std::span<std::uint8_t> bytes) override
    {
        const std::lock_guard lock(owner_.mutex_);
        const std::size_t left = file_->content.size() - std::min(at_, file_->content.size());
        const std::size_t count = std::min(left, bytes.size());
        std::copy_n(file_->content.end() - static_cast<std::ptrdiff_t>(left), count, bytes.begin());
        at_ += count;
        return count;
    }
    void seek(std::uint64_t offset) override { at_ = static_cast<std::size_t>(offset); }
    void forgetMemory() override {}

private:
    ForgetfulFileSystem& owner_;
    const FilePtr file_;
    std::size_t at_ = 0;
};

class ForgetfulFileSystem::WipeFile final : public VaultCore::IWipeFile
{
public:
    WipeFile(ForgetfulFileSystem& owner, std::string path)
        : owner_(owner), path_(std::move(path)), file_(owner.require(path_))
    {
    }

    VaultCore::FileInfo info() override
    {
        const std::lock_guard lock(owner_.mutex_);
        return owner_.infoOf(*file_);
    }
    std::vector<VaultCore::Extent> extents() override
    {
        const std::lock_guard lock(owner_.mutex_);
        if (file_->content.empty())
            return {};
        return {{0, file_->content.size()}};
    }
    void write(std::uint64_t offset, std::span<const std::uint8_t> bytes) override
    {
        const std::lock_guard lock(owner_.mutex_);
        owner_.write(*file_, offset, bytes);
    }
    void flush() override
    {
        const std::lock_guard lock(owner_.mutex_);
        owner_.flushContent(*file_);
    }
    void truncate() override
    {
        const std::lock_guard lock(owner_.mutex_);
        owner_.cut(*file_, 0);
    }
    void rename(const VaultCore::NativeText& name) override
    {
        const std::lock_guard lock(owner_.mutex_);
        const std::string to = path_.substr(0, path_.rfind('/') + 1) + std::string(name.begin(), name.end());
        owner_.rename(path_, to);
        path_ = to;
    }
    void remove() override
    {
        const std::lock_guard lock(owner_.mutex_);
        owner_.unlink(path_);
    }

private:
    ForgetfulFileSystem& owner_;
    std::string path_;
    const FilePtr file_;
};

class ForgetfulFileSystem::NewFile final : public VaultCore::INewFile
{
public:
    NewFile(ForgetfulFileSystem& owner, std::string path)
        : owner_(owner), path_(std::move(path)), file_(owner.require(path_))
    {
        owner_.inTheMaking_.insert(file_->node);
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    ~NewFile() override
    {
        const std::lock_guard lock(owner_.mutex_);
        owner_.inTheMaking_.erase(file_->node);
        if (!named_ && owner_.find(path_) == file_)
            owner_.unlink(path_);
    }

    void write(std::span<const std::uint8_t> bytes) override
    {
        const std::lock_guard lock(owner_.mutex_);
        owner_.write(*file_, at_, bytes);
        at_ += bytes.size();
    }
    void cutTo(std::uint64_t size) override
    {
        const std::lock_guard lock(owner_.mutex_);
        owner_.cut(*file_, size);
        at_ = size;
    }
    void takeOver(const VaultCore::FileInfo& like) override
    {
        const std::lock_guard lock(owner_.mutex_);
        if (like.modified != 0)
            file_->modified = like.modified;
    }
    VaultCore::FileInfo publish(const VaultCore::NativeText& name) override
    {
        const std::lock_guard lock(owner_.mutex_);
        owner_.flushContent(*file_);
        VaultCore::FileInfo info = rename(name);
        owner_.flushNames(*file_);
        return info;
    }
    VaultCore::FileInfo rename(const VaultCore::NativeText& name) override
    {
        const std::lock_guard lock(owner_.mutex_);
        const std::string to = path_.substr(0, path_.rfind('/') + 1) + std::string(name.begin(), name.end());
        owner_.rename(path_, to);
        path_ = to;
        named_ = true;
        return owner_.infoOf(*file_);
    }
    void flush()
    {
        owner_.flushContent(*file_);
        owner_.flushNames(*file_);
    }

private:
    ForgetfulFileSystem& owner_;
    std::string path_;
    const FilePtr file_;
    std::uint64_t at_ = 0;
    bool named_ = false;
};

} // namespace Faults
