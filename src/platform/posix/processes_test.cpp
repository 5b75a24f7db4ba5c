#include "platform/processes.h"

#include "platform/posix/process_records.h"
#include "platform/posix/start_program.h"
#include "platform/posix/testing_desktop.h"
#include "platform/shell.h"
#include "platform/testing_processes.h"
#include "platform/threads.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <optional>
#include <thread>

namespace
{

constexpr std::uint32_t Patience = 30000;

class PosixProcessesTest : public testing::Test
{
protected:
    void* function(const char* name) { return processes_.findFunction(processes_.loadedModule(L"kernel32.dll"), name); }

    std::vector<Platform::ProcessEntry> listed()
    {
        std::vector<Platform::ProcessEntry> entries;
        const Platform::Handle snapshot =
            processes_.createSnapshot(function("CreateToolhelp32Snapshot"), Platform::SnapshotProcesses, 0);
        Platform::ProcessEntry entry{ProcessEntrySize};
        for (const char* name = "Process32First"; processes_.nextProcess(function(name), snapshot, entry);
             name = "Process32Next")
            entries.push_back(entry);
        EXPECT_TRUE(handles_.close(snapshot));
        return entries;
    }

    std::optional<Platform::ProcessEntry> entryOf(std::uint32_t id)
    {
        for (const Platform::ProcessEntry& entry : listed())
            if (entry.processId == id)
                return entry;
        return std::nullopt;
    }

    Platform::Handle open(std::uint32_t id) { return processes_.open(Platform::AccessSynchronize, false, id); }
    std::uint32_t wait(Platform::Handle handle, std::uint32_t limit) { return handles_.wait(handle, limit, false); }

    Platform::Processes& processes_ = Platform::nativeSystem().processes;
    Platform::Handles& handles_ = Platform::nativeSystem().handles;
};

/// Documents that are opened by scripts which start one another. Each says its process id in a file, and ends when the
/// test says so.
class AHandOn : public PosixProcessesTest
{
protected:
    AHandOn()
    {
        TestingFolder::write(at(L"letter"), TestingDesktop::Content);
        const std::string end = "while [ ! -e $folder/end-$me ]; do sleep 0.01; done\n";
        const std::string start =
            "me=$1; folder=" + name("") + "\necho $$ > $folder/new-$me\n" + "mv $folder/new-$me $folder/id-$me\n";
        desktop_.addScript("step.sh", start + end + "[ $me = 3 ] || \"$0\" $((me + 1)) &\n");
        desktop_.addApplication("editor", name("desktop/step.sh") + " 1");
        desktop_.makeDefault("editor");
    }
    ~AHandOn() override
    {
        for (const int step : {1, 2, 3})
            tellToEnd(step);
    }

    std::wstring at(const std::wstring& file) const { return folder_.path() + L'/' + file; }
    std::string name(const std::string& file) const
    {
        return Platform::toUtf8(folder_.path()) + (file.empty() ? "" : "/") + file;
    }

    Platform::Handle openDocument()
    {
        Platform::ShellExecution opening{60, 0x540, at(L"letter"), {}, Platform::ShowNormal, nullptr};
        EXPECT_TRUE(Platform::nativeSystem().shell.execute(opening));
        return opening.process;
    }

    void tellToEnd(int step) { TestingFolder::write(at(L"end-" + std::to_wstring(step)), ""); }

    /// Waits until the step runs.
    std::uint32_t idOf(int step)
    {
        const std::string file = name("id-" + std::to_string(step));
        while (!std::filesystem::exists(file))
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        std::uint32_t id = 0;
        std::ifstream(file) >> id;
        return id;
    }

    TestingFolder folder_;
    TestingDesktop desktop_{at(L"desktop")};
};

} // namespace

TEST_F(PosixProcessesTest, theListStandsBehindTheNamesOfTheOtherSystem)
{
    for (const char* name : {"CreateToolhelp32Snapshot", "Process32First", "Process32Next", "Module32First",
                             "Module32Next", "Thread32First", "Thread32Next"})
        EXPECT_NE(function(name), nullptr) << name;
    EXPECT_EQ(function("EnumProcesses"), nullptr);
    EXPECT_EQ(processes_.loadModule(L"psapi.dll"), nullptr);
    EXPECT_EQ(processes_.loadedModule(L"ntdll.dll"), nullptr);
    EXPECT_EQ(processes_.findFunction(nullptr, "Process32First"), nullptr);
}

TEST_F(PosixProcessesTest, recordsOfAnotherSizeAreRefused)
{
    const std::uint32_t all = Platform::SnapshotProcesses | Platform::SnapshotThreads | Platform::SnapshotModules;
    const Platform::Handle snapshot = processes_.createSnapshot(function("CreateToolhelp32Snapshot"), all, 0);
    Platform::ProcessEntry process{296}; // the size of the narrow record
    Platform::ModuleEntry module{548};
    Platform::ThreadEntry thread{32};
    EXPECT_FALSE(processes_.nextProcess(function("Process32First"), snapshot, process));
    EXPECT_FALSE(processes_.nextModule(function("Module32First"), snapshot, module));
    EXPECT_FALSE(processes_.nextThread(function("Thread32First"), snapshot, thread));
    process.size = ProcessEntrySize;
    EXPECT_FALSE(processes_.nextProcess(function("Thread32First"), snapshot, process)) << "another function";
    EXPECT_TRUE(processes_.nextProcess(function("Process32First"), snapshot, process));
    EXPECT_TRUE(handles_.close(snapshot));
    EXPECT_FALSE(processes_.nextProcess(function("Process32First"), snapshot, process)) << "closed";
}

TEST_F(PosixProcessesTest, theNameOfAProcessIsThatOfItsProgramAndItsModuleIsTheFullPath)
{
    const auto program = std::filesystem::read_symlink("/proc/self/exe");
    const auto entry = entryOf(processes_.currentId());
    ASSERT_TRUE(entry);
    EXPECT_EQ(Platform::toUtf8(entry->file), program.filename().string());
    EXPECT_EQ(entry->parentId, static_cast<std::uint32_t>(getppid()));

    const Platform::Handle snapshot = processes_.createSnapshot(function("CreateToolhelp32Snapshot"),
                                                                Platform::SnapshotModules, processes_.currentId());
    Platform::ModuleEntry module{ModuleEntrySize};
    ASSERT_TRUE(processes_.nextModule(function("Module32First"), snapshot, module));
    EXPECT_EQ(Platform::toUtf8(module.path), program.string());
    EXPECT_FALSE(processes_.nextModule(function("Module32Next"), snapshot, module));
    EXPECT_TRUE(handles_.close(snapshot));
}

TEST_F(PosixProcessesTest, aProcessThatDoesNotRunHasNoModules)
{
    EXPECT_EQ(processes_.createSnapshot(function("CreateToolhelp32Snapshot"), Platform::SnapshotModules, NoProcess),
              Platform::InvalidHandle);
}

TEST_F(PosixProcessesTest, theListIsInTheOrderOfTheIds)
{
    const auto entries = listed();
    EXPECT_TRUE(std::is_sorted(entries.begin(), entries.end(),
                               [](const auto& one, const auto& other) { return one.processId < other.processId; }));
}

TEST_F(PosixProcessesTest, anEndedProcessIsNeitherListedNorOpened)
{
    const pid_t child = Platform::startProgram("/bin/sh", {"sh", "-c", "kill -STOP $$"});
    const auto id = static_cast<std::uint32_t>(child);
    const Platform::Handle handle = open(id);
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(entryOf(id)->parentId, processes_.currentId());
    EXPECT_EQ(wait(handle, 0), Platform::WaitTimedOut);

    kill(child, SIGKILL);
    EXPECT_EQ(wait(handle, Patience), Platform::WaitSignalled);
    EXPECT_EQ(wait(handle, Platform::WaitForever), Platform::WaitSignalled) << "for good";
    EXPECT_FALSE(entryOf(id));
    EXPECT_EQ(open(id), nullptr);
    EXPECT_TRUE(handles_.close(handle));
    EXPECT_EQ(waitpid(child, nullptr, 0), child) << "whoever starts a child himself takes notice of its end himself";
}

TEST_F(PosixProcessesTest, aThreadIsNoProcess)
{
    std::uint32_t thread = 0;
    const auto end = Platform::nativeSystem().threads.createEvent();
    const auto known = Platform::nativeSystem().threads.createEvent();
    const auto other = Platform::nativeSystem().threads.start(
        [&]
        {
            thread = Platform::nativeSystem().threads.currentThreadId();
            known->set();
            end->wait();
        });
    known->wait();
    EXPECT_EQ(open(thread), nullptr);
    EXPECT_FALSE(entryOf(thread));
    end->set();
    other->wait();
}

TEST_F(PosixProcessesTest, noProcessHasWindowsToBecomeIdle)
{
    const Platform::Handle handle = open(processes_.currentId());
    EXPECT_EQ(processes_.waitForInputIdle(handle, Platform::WaitForever), Platform::WaitFailed);
    EXPECT_TRUE(handles_.close(handle));
}

TEST_F(AHandOn, isFollowedFromEachProcessThatEndsToTheOneThatItLeaves)
{
    const Platform::Handle first = openDocument();
    const std::uint32_t firstId = idOf(1);
    EXPECT_EQ(entryOf(firstId)->parentId, processes_.currentId());
    tellToEnd(1);
    const std::uint32_t secondId = idOf(2);
    EXPECT_EQ(wait(first, Patience), Platform::WaitSignalled);
    EXPECT_FALSE(entryOf(firstId));
    EXPECT_FALSE(Platform::processRecord(firstId)) << "notice was taken of its end";
    EXPECT_EQ(entryOf(secondId)->parentId, firstId);

    const Platform::Handle second = open(secondId);
    tellToEnd(2);
    const std::uint32_t thirdId = idOf(3);
    EXPECT_EQ(wait(second, Patience), Platform::WaitSignalled);
    EXPECT_EQ(entryOf(thirdId)->parentId, secondId);

    const Platform::Handle third = open(thirdId);
    tellToEnd(3);
    EXPECT_EQ(wait(third, Patience), Platform::WaitSignalled);
    EXPECT_FALSE(Platform::processRecord(thirdId));
    for (const Platform::Handle handle : {first, second, third})
        EXPECT_TRUE(handles_.close(handle));
}

TEST_F(AHandOn, thatIsOverBeforeAnybodyLooksLeavesAChildOfThisProcess)
{
    tellToEnd(1);
    const Platform::Handle first = openDocument();
    const std::uint32_t firstId = idOf(1);
    const std::uint32_t secondId = idOf(2);
    while (Platform::processRecord(firstId) && !Platform::processRecord(firstId)->hasEnded)
        std::this_thread::yield();
    EXPECT_TRUE(handles_.close(first));
    EXPECT_EQ(entryOf(secondId)->parentId, processes_.currentId());
    EXPECT_FALSE(Platform::processRecord(firstId)) << "notice was taken of its end";

    EXPECT_EQ(open(firstId), nullptr);
    EXPECT_EQ(entryOf(secondId)->parentId, processes_.currentId()) << "as it was first seen";
    const Platform::Handle second = open(secondId);
    tellToEnd(2);
    const std::uint32_t thirdId = idOf(3);
    EXPECT_EQ(wait(second, Patience), Platform::WaitSignalled);
    EXPECT_EQ(entryOf(thirdId)->parentId, secondId);
    const Platform::Handle third = open(thirdId);
    tellToEnd(3);
    EXPECT_EQ(wait(third, Patience), Platform::WaitSignalled);
    EXPECT_TRUE(handles_.close(second));
    EXPECT_TRUE(handles_.close(third));
}

TEST_F(AHandOn, isFollowedThroughAnEndThatIsFoundWhenTheProcessIsOpened)
{
    const Platform::Handle first = openDocument();
    const std::uint32_t firstId = idOf(1);
    EXPECT_EQ(entryOf(firstId)->parentId, processes_.currentId());
    EXPECT_TRUE(handles_.close(first));
    tellToEnd(1);
    const std::uint32_t secondId = idOf(2);
    while (open(firstId))
        std::this_thread::yield();
    EXPECT_EQ(entryOf(secondId)->parentId, firstId);
    tellToEnd(2);
    tellToEnd(3);
    const std::uint32_t thirdId = idOf(3);
    for (const std::uint32_t id : {secondId, thirdId})
        while (open(id))
            std::this_thread::yield();
}
