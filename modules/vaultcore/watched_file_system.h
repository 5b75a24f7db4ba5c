#pragma once

#include "vaultcore/file_failure.h"
#include "vaultcore/file_system.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

// For tests: the real file system with failures on order.

namespace VaultCore
{

namespace fs = std::filesystem;

/// The real file system, for several threads at a time as long as the scripts are. An operation on a name listed in
/// `failures` fails so often; `trace` tells what a wipe did.
class WatchedFileSystem : public IFileSystem
{
public:
    struct Failure
    {
        FailureCause cause = FailureCause::Other;
        int times = 1;
        /// So often it goes well before.
        int after = 0;
    };

    Place locate(const std::wstring& entry) override { return real_->locate(entry); }
    std::wstring display(const Place& place) override { return real_->display(place); }
    std::wstring displayName(const NativeText& name) override { return real_->displayName(name); }
    NativeText fold(const NativeText& name) override { return real_->fold(name); }
    FileInfo inspect(const Place& place) override
    {
        failIfAsked("inspect", place);
        FileInfo info = real_->inspect(place);
        changeInfo(place, info);
        return info;
    }
    FileIdentity inspectParent(const Place& place) override { return real_->inspectParent(place); }
    std::vector<NativeText> list(const Place& folder) override
    {
        failIfAsked("list", folder);
        return real_->list(folder);
    }
    std::unique_ptr<IWipeFile> openForWipe(const Place& place) override
    {
        failIfAsked("open", place);
        return std::make_unique<WatchedFile>(*this, real_->openForWipe(place));
    }
    void renameFolder(const Place& folder, const NativeText& name) override { real_->renameFolder(folder, name); }
    void remove(const Place& place, FileKind kind) override
    {
        beforeRemove(place);
        failIfAsked("remove", place);
        real_->remove(place, kind);
    }
    void removeUnchanged(const Place& place, const FileInfo& expected) override
    {
        beforeRemove(place);
        failIfAsked("remove", place);
        real_->removeUnchanged(place, expected);
    }
    Place locateFolder(const std::wstring& path) override { return real_->locateFolder(path); }
    NativeText leafName(const std::wstring& text) override { return real_->leafName(text); }
    std::unique_ptr<IReadFile> openForReading(const Place& place) override
    {
        beforeOpen(place);
        failIfAsked("read", place);
        return std::make_unique<WatchedReadFile>(*this, place, real_->openForReading(place));
    }
    std::unique_ptr<INewFile> createNew(const Place& place) override
    {
        failStep("create");
        return std::make_unique<WatchedNewFile>(*this, real_->createNew(place));
    }
    void flush(const std::vector<INewFile*>& files) override
    {
        failStep("flush files");
        std::vector<INewFile*> real;
        for (INewFile* file : files)
            real.push_back(&static_cast<WatchedNewFile*>(file)->real());
        real_->flush(real);
    }
    void createFolder(const Place& place) override
    {
        failIfAsked("create folder", place);
        real_->createFolder(place);
    }
    bool removeAbandoned(const Place& place) override { return real_->removeAbandoned(place); }

    void failIfAsked(const std::string& operation, const Place& place)
    {
        failStep(operation + " " + fs::path(nameOf(place)).string());
    }

    void failStep(const std::string& step)
    {
        const std::lock_guard lock(mutex_);
        const auto found = failures.find(step);
        if (found == failures.end() || found->second.after-- > 0)
            return;
        if (found->second.times-- > 0)
            throw FileFailure(found->second.cause, 0);
    }

    std::map<std::string, Failure> failures;
    std::vector<std::string> trace;
    std::vector<std::uint8_t> written;
    std::uint64_t bytesWritten = 0;
    /// Files that were to be read from the device.
    std::vector<Place> forgotten;
    std::function<void(const Place&)> beforeRemove = [](const Place&) {};
    std::function<void()> beforeTruncate = [] {};
    std::function<void(const Place&)> beforeOpen = [](const Place&) {};
    std::function<void(const Place&)> beforeRead = [](const Place&) {};
    /// What the jobs are told of a name.
    std::function<void(const Place&, FileInfo&)> changeInfo = [](const Place&, FileInfo&) {};
    /// What a new file gets instead.
    std::function<void(std::span<std::uint8_t>)> changeWritten = [](std::span<std::uint8_t>) {};
    std::function<void()> beforePublish = [] {};

private:
    class WatchedFile final : public IWipeFile
    {
    public:
        WatchedFile(WatchedFileSystem& owner, std::unique_ptr<IWipeFile> real) : owner_(owner), real_(std::move(real))
        {
        }
        FileInfo info() override { return real_->info(); }
        std::vector<Extent> extents() override { return real_->extents(); }
        void write(std::uint64_t offset, std::span<const std::uint8_t> bytes) override
        {
            step("write");
            owner_.bytesWritten += bytes.size();
            owner_.written.assign(bytes.begin(), bytes.end());
            real_->write(offset, bytes);
        }
        void flush() override
        {
            step("flush");
            real_->flush();
        }
        void truncate() override
        {
            owner_.beforeTruncate();
            step("truncate");
            real_->truncate();
        }
        void rename(const NativeText& name) override
        {
            step("rename");
            real_->rename(name);
        }
        void remove() override
        {
            step("remove");
            real_->remove();
        }

    private:
        void step(const std::string& name)
        {
            owner_.failStep(name);
            owner_.trace.push_back(name);
        }
        WatchedFileSystem& owner_;
        std::unique_ptr<IWipeFile> real_;
    };

    class WatchedReadFile final : public IReadFile
    {
    public:
        WatchedReadFile(WatchedFileSystem& owner, Place place, std::unique_ptr<IReadFile> real)
            : owner_(owner), place_(std::move(place)), real_(std::move(real))
        {
        }
        FileInfo info() override { return real_->info(); }
        std::size_t read(std::span<std::uint8_t> bytes) override
        {
            owner_.beforeRead(place_);
            owner_.failIfAsked("content", place_);
            return real_->read(bytes);
        }
        void seek(std::uint64_t offset) override { real_->seek(offset); }
        void forgetMemory() override
        {
            owner_.forget(place_);
            real_->forgetMemory();
        }

    private:
        WatchedFileSystem& owner_;
        Place place_;
        std::unique_ptr<IReadFile> real_;
    };

    class WatchedNewFile final : public INewFile
    {
    public:
        WatchedNewFile(WatchedFileSystem& owner, std::unique_ptr<INewFile> real) : owner_(owner), real_(std::move(real))
        {
        }
        void write(std::span<const std::uint8_t> bytes) override
        {
            owner_.failStep("new write");
            std::vector<std::uint8_t> changed(bytes.begin(), bytes.end());
            owner_.changeWritten(changed);
            real_->write(changed);
        }
        void cutTo(std::uint64_t size) override { real_->cutTo(size); }
        void takeOver(const FileInfo& like) override { real_->takeOver(like); }
        FileInfo publish(const NativeText& name) override
        {
            owner_.beforePublish();
            owner_.failStep("publish");
            return real_->publish(name);
        }
        FileInfo rename(const NativeText& name) override
        {
            owner_.beforePublish();
            owner_.failStep("publish");
            return real_->rename(name);
        }
        INewFile& real() { return *real_; }

    private:
        WatchedFileSystem& owner_;
        std::unique_ptr<INewFile> real_;
    };

    void forget(const Place& place)
    {
        const std::lock_guard lock(mutex_);
        forgotten.push_back(place);
    }

    std::mutex mutex_;
    std::unique_ptr<IFileSystem> real_ = createFileSystem();
};

} // namespace VaultCore
