#include "vaultcore/deleter.h"

#include "interfaces/release_ptr.h"
#include "interfaces/vaultcore/exception.h"
#include "vaultcore/file_list.h"
#include "vaultcore/operation_events.h"
#include "vaultcore/testing_support.h"

#include <future>
#include <thread>

namespace VaultCore
{
namespace
{

class DeleterTest : public JobTest
{
protected:
    DeleterTest()
    {
        events->SetFileListBuilderEvents(&recorder);
        events->SetOverallProgressEvents(&recorder);
        events->SetFileProgressEvents(&recorder);
        events->SetFileConflictEvents(&recorder);
    }

    void waitForTheEnd()
    {
        while (!deleter->IsFinished())
            std::this_thread::yield();
    }

    Recorder recorder;
    ReleasePtr<IFileList> list{new FileList};
    ReleasePtr<IDeletionOptions> options{new DeletionOptions};
    ReleasePtr<IOperationEvents> events{new OperationEvents};
    ReleasePtr<IDeleter> deleter{new Deleter(createFileSystem())};
};

TEST_F(DeleterTest, removesTheFilesOfTheList)
{
    const fs::path file = put(inside / "a.txt", "abc");
    list->Add(wide(file).c_str());
    deleter->Start(list.get(), options.get(), events.get());
    waitForTheEnd();
    EXPECT_FALSE(fs::exists(file));
    EXPECT_EQ(recorder.succeeded, 1);
}

TEST_F(DeleterTest, ofAListWithOneEmptyEntryReportsAFailedFileAndTouchesNothing)
{
    put(inside / "a.txt", "abc");
    list->Add(L"");
    for (const std::uint32_t method : {0U, 2U})
    {
        const CurrentFolder current(inside);
        const ReleasePtr<IDeleter> worker(new Deleter(createFileSystem()));
        options->SetMethod(method);
        worker->Start(list.get(), options.get(), events.get());
        while (!worker->IsFinished())
            std::this_thread::yield();
        const std::vector<std::wstring> expected{L"operation started", L"built 0 0", L"started ", L"error ", L"failed",
                                                 L"operation finished"};
        EXPECT_EQ(recorder.log, expected);
        recorder.log.clear();
    }
    EXPECT_EQ(content(inside / "a.txt"), "abc");
    EXPECT_EQ(countIn(inside), 1U);
}

TEST_F(DeleterTest, wipesByMethodTwoAlone)
{
    for (const std::uint32_t method : {0U, 1U, 2U, 3U})
    {
        const fs::path file = put(inside / "a.txt", "abc");
        const ReleasePtr<IFileList> files(new FileList);
        files->Add(wide(file).c_str());
        const ReleasePtr<IDeleter> worker(new Deleter(createFileSystem()));
        options->SetMethod(method);
        recorder.log.clear();
        worker->Start(files.get(), options.get(), events.get());
        while (!worker->IsFinished())
            std::this_thread::yield();
        // Only a wipe reports before it begins.
        const bool wiped = std::count(recorder.log.begin(), recorder.log.end(), L"progress 0/3") == 1;
        EXPECT_EQ(wiped, method == 2) << method;
    }
}

TEST_F(DeleterTest, startReturnsWhileTheJobIsAtWorkAndIsFinishedFollowsTheLastCallback)
{
    std::promise<void> go;
    std::future<void> gate = go.get_future();
    recorder.progressAnswer = [&](std::uint64_t, std::uint64_t)
    {
        gate.wait();
        return 1;
    };
    list->Add(wide(put(inside / "a.txt", "abc")).c_str());
    deleter->Start(list.get(), options.get(), events.get());
    EXPECT_FALSE(deleter->IsFinished());
    go.set_value();
    waitForTheEnd();
    EXPECT_EQ(recorder.log.back(), L"operation finished");
}

TEST_F(DeleterTest, releaseWaitsForTheEnd)
{
    const fs::path file = put(inside / "a.txt", "abc");
    list->Add(wide(file).c_str());
    deleter->Start(list.get(), options.get(), events.get());
    deleter.reset();
    EXPECT_EQ(recorder.log.back(), L"operation finished");
    EXPECT_FALSE(fs::exists(file));
}

TEST_F(DeleterTest, worksWithoutAnyReceiver)
{
    const fs::path file = put(inside / "a.txt", "abc");
    list->Add(wide(file).c_str());
    list->Add(wide(inside / "missing.txt").c_str());
    const ReleasePtr<IOperationEvents> silent(new OperationEvents);
    deleter->Start(list.get(), options.get(), silent.get());
    waitForTheEnd();
    EXPECT_FALSE(fs::exists(file));
    EXPECT_TRUE(recorder.log.empty());
}

TEST_F(DeleterTest, refusesASecondStartAndMissingArguments)
{
    EXPECT_THROW(deleter->Start(nullptr, options.get(), events.get()), Exception);
    EXPECT_THROW(deleter->Start(list.get(), nullptr, events.get()), Exception);
    EXPECT_THROW(deleter->Start(list.get(), options.get(), nullptr), Exception);
    deleter->Start(list.get(), options.get(), events.get());
    EXPECT_THROW(deleter->Start(list.get(), options.get(), events.get()), Exception);
}

TEST_F(DeleterTest, ofAnEmptyListRunsFromStartToEnd)
{
    deleter->Start(list.get(), options.get(), events.get());
    waitForTheEnd();
    const std::vector<std::wstring> expected{L"operation started", L"built 0 0", L"operation finished"};
    EXPECT_EQ(recorder.log, expected);
}

} // namespace
} // namespace VaultCore
