#pragma once

#include "vaultcore/deletion_job.h"
#include "vaultcore/file_failure.h"
#include "vaultcore/file_system.h"

#include <algorithm>

#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <string>
#include <vector>

// What the tests of this folder share: a temporary folder, a recorder of all callbacks, and the real file system with
// failures on order.

namespace VaultCore
{

namespace fs = std::filesystem;

inline std::wstring wide(const fs::path& path)
{
    return createFileSystem()->displayName(path.native());
}

inline fs::path newTemporaryFolder()
{
    std::random_device random;
    const fs::path folder = fs::temp_directory_path() / ("vaultcore-" + std::to_string(random()));
    fs::create_directory(folder);
    return folder;
}

/// A folder with an `inside` for the job and an `outside` that has to stay as it is.
class JobTest : public testing::Test
{
protected:
    JobTest()
    {
        fs::create_directory(inside);
        fs::create_directory(outside);
        put(outside / "kept.txt", "kept");
    }

    ~JobTest() override
    {
        std::error_code ignored;
        fs::remove_all(base, ignored);
    }

    void TearDown() override { EXPECT_EQ(content(outside / "kept.txt"), "kept"); }

    static fs::path put(const fs::path& path, const std::string& text)
    {
        std::ofstream(path, std::ios::binary) << text;
        return path;
    }

    static std::string content(const fs::path& path)
    {
        std::ifstream stream(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    static std::size_t countIn(const fs::path& folder)
    {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), {}));
    }

    const fs::path base = newTemporaryFolder();
    const fs::path inside = base / "inside";
    const fs::path outside = base / "outside";
};

/// Writes every callback down. The answers can be scripted.
class Recorder : public IOverallProgressEvents,
                 public IFileListBuilderEvents,
                 public IFileProgressEvents,
                 public IFileConflictEvents
{
public:
    virtual ~Recorder() = default;

    EventReceivers receivers() { return {this, this, this, nullptr, this}; }

    void OnOperationStarted() override { log.push_back(L"operation started"); }
    void OnFileStarted(const wchar_t* name) override { log.push_back(L"started " + last(name)); }
    void OnFileFinished(const void* file, const wchar_t* text, std::uint32_t error) override
    {
        EXPECT_NE(file, nullptr);
        ++(error == 0 ? succeeded : failed);
        texts.push_back(text);
        log.push_back(error == 0 ? L"finished" : L"failed");
    }
    void OnOperationFinished() override { log.push_back(L"operation finished"); }

    void OnFileListBuilt(std::uint32_t count, std::uint64_t total) override
    {
        totalSize = total;
        log.push_back(L"built " + std::to_wstring(count) + L" " + std::to_wstring(total));
    }
    int OnFileListEntry(std::uint32_t index, std::uint32_t, std::uint32_t) override
    {
        log.push_back(L"entry " + std::to_wstring(index));
        return entryAnswer(index);
    }
    int OnFileProgress(std::uint64_t done, std::uint64_t total) override
    {
        log.push_back(L"progress " + std::to_wstring(done) + L"/" + std::to_wstring(total));
        return progressAnswer(done, total);
    }
    int OnFileConflict(std::uint32_t, std::uint32_t) override { return 0; }
    int OnFileError(const wchar_t* source, const wchar_t* target, const wchar_t* message) override
    {
        EXPECT_STREQ(target, L"");
        messages.push_back(message);
        log.push_back(L"error " + last(source));
        return errorAnswer();
    }

    std::vector<std::wstring> log;
    std::vector<std::wstring> texts;
    std::vector<std::wstring> messages;
    int succeeded = 0;
    int failed = 0;
    std::uint64_t totalSize = 0;
    std::function<int(std::uint32_t)> entryAnswer = [](std::uint32_t) { return 1; };
    std::function<int(std::uint64_t, std::uint64_t)> progressAnswer = [](std::uint64_t, std::uint64_t) { return 1; };
    std::function<int()> errorAnswer = [] { return FileErrorSkip; };

private:
    static std::wstring last(const std::wstring& path) { return path.substr(path.find_last_of(L"\\/") + 1); }
};

/// The real file system. An operation on a name listed in `failures` fails so often; `trace` tells what a wipe did.
class WatchedFileSystem : public IFileSystem
{
public:
    struct Failure
    {
        FailureCause cause = FailureCause::Other;
        int times = 1;
    };

    Place locate(const std::wstring& entry) override { return real_->locate(entry); }
    std::wstring display(const Place& place) override { return real_->display(place); }
    std::wstring displayName(const NativeText& name) override { return real_->displayName(name); }
    NativeText fold(const NativeText& name) override { return real_->fold(name); }
    FileInfo inspect(const Place& place) override
    {
        failIfAsked("inspect", place);
        return real_->inspect(place);
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

    void failIfAsked(const std::string& operation, const Place& place)
    {
        const auto found = failures.find(operation + " " + fs::path(nameOf(place)).string());
        if (found != failures.end() && found->second.times-- > 0)
            throw FileFailure(found->second.cause, 0);
    }

    void failStep(const std::string& step)
    {
        const auto found = failures.find(step);
        if (found != failures.end() && found->second.times-- > 0)
            throw FileFailure(found->second.cause, 0);
    }

    std::map<std::string, Failure> failures;
    std::vector<std::string> trace;
    std::vector<std::uint8_t> written;
    std::uint64_t bytesWritten = 0;
    std::function<void(const Place&)> beforeRemove = [](const Place&) {};
    std::function<void()> beforeTruncate = [] {};

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

    std::unique_ptr<IFileSystem> real_ = createFileSystem();
};

/// Names the tests that are run for both methods.
inline std::string methodName(const testing::TestParamInfo<bool>& method)
{
    return method.param ? "wipe" : "remove";
}

/// Runs one job to its end.
inline void removeAll(IFileSystem& files, Recorder& recorder, const std::vector<fs::path>& entries, bool wipe = false)
{
    std::vector<std::wstring> texts;
    for (const fs::path& entry : entries)
        texts.push_back(wide(entry));
    DeletionJob(files, recorder.receivers(), wipe).run(texts);
}

} // namespace VaultCore
