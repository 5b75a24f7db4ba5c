#pragma once

#include "vaultcore/deletion_job.h"
#include "vaultcore/file_failure.h"
#include "vaultcore/file_system.h"
#include "vaultcore/watched_file_system.h"

#include <algorithm>

#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

// What the tests of this folder share: a temporary folder, a recorder of all callbacks, and one run of a removal.

namespace VaultCore
{

inline std::wstring wide(const fs::path& path)
{
    return createFileSystem()->displayName(path.native());
}

/// Makes a folder the current one until its end.
class CurrentFolder
{
public:
    explicit CurrentFolder(const fs::path& folder) { fs::current_path(folder); }
    ~CurrentFolder() { fs::current_path(before_); }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;

private:
    const fs::path before_ = fs::current_path();
};

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

    EventReceivers receivers() { return {this, this, this, &destiny, this}; }

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
        targets.push_back(last(target));
        messages.push_back(message);
        log.push_back(L"error " + last(source));
        return errorAnswer();
    }

    std::vector<std::wstring> log;
    std::vector<std::wstring> texts;
    std::vector<std::wstring> messages;
    std::vector<std::wstring> targets;
    int succeeded = 0;
    int failed = 0;
    std::uint64_t totalSize = 0;
    std::function<int(std::uint32_t)> entryAnswer = [](std::uint32_t) { return 1; };
    std::function<int(std::uint64_t, std::uint64_t)> progressAnswer = [](std::uint64_t, std::uint64_t) { return 1; };
    std::function<int(std::uint64_t, std::uint64_t)> destinyAnswer = [](std::uint64_t, std::uint64_t) { return 1; };
    std::function<int()> errorAnswer = [] { return FileErrorSkip; };

private:
    /// The second receiver of the same interface.
    struct Destiny final : IFileProgressEvents
    {
        explicit Destiny(Recorder& owner) : recorder(owner) {}
        int OnFileProgress(std::uint64_t done, std::uint64_t total) override
        {
            recorder.log.push_back(L"destiny " + std::to_wstring(done) + L"/" + std::to_wstring(total));
            return recorder.destinyAnswer(done, total);
        }
        Recorder& recorder;
    };
    Destiny destiny{*this};

    static std::wstring last(const std::wstring& path) { return path.substr(path.find_last_of(L"\\/") + 1); }
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
    // A removal has no target, whatever it asks.
    for (const std::wstring& target : recorder.targets)
        EXPECT_EQ(target, L"");
}

} // namespace VaultCore
