#include "platform/posix/process_records.h"

#include <gtest/gtest.h>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

using namespace Platform;

namespace
{

std::string statText(const std::string& name, char state, int threads)
{
    return "4711 (" + name + ") " + state + " 815 1 1 0 -1 4194560 1 2 3 4 5 6 7 8 20 0 " + std::to_string(threads) +
           " 0 9001 1000 2000\n";
}

std::uint32_t idOf(pid_t process)
{
    return static_cast<std::uint32_t>(process);
}

} // namespace

TEST(AProcessRecord, isReadFromTheTextOfTheSystem)
{
    const auto record = parseProcessRecord(statText("editor", 'S', 3));
    ASSERT_TRUE(record);
    EXPECT_EQ(record->id, 4711u);
    EXPECT_EQ(record->parent, 815u);
    EXPECT_EQ(record->started, 9001u);
    EXPECT_EQ(record->name, "editor");
    EXPECT_FALSE(record->hasEnded);
}

TEST(AProcessRecord, isReadWhateverTheNameOfTheProgramIs)
{
    for (const std::string name : {"a) S 1 (b", "with space", "()", "", "line\nbreak", "12 (x) Z 1"})
    {
        const auto record = parseProcessRecord(statText(name, 'R', 1));
        ASSERT_TRUE(record) << name;
        EXPECT_EQ(record->name, name);
        EXPECT_EQ(record->parent, 815u) << name;
    }
}

TEST(AProcessRecord, tellsOfTheEnd)
{
    EXPECT_TRUE(parseProcessRecord(statText("editor", 'Z', 1))->hasEnded);
    EXPECT_TRUE(parseProcessRecord(statText("editor", 'X', 0))->hasEnded);
    EXPECT_FALSE(parseProcessRecord(statText("editor", 'D', 1))->hasEnded);
}

TEST(AProcessRecord, countsAsRunningWhileOneOfItsThreadsDoes)
{
    EXPECT_FALSE(parseProcessRecord(statText("editor", 'Z', 2))->hasEnded);
}

TEST(AProcessRecord, isNotReadFromOtherText)
{
    EXPECT_FALSE(parseProcessRecord(""));
    EXPECT_FALSE(parseProcessRecord("4711 editor S 815"));
    EXPECT_FALSE(parseProcessRecord("4711 (editor) S 815 1 1"));
    EXPECT_FALSE(parseProcessRecord(")("));
}

TEST(ProcessRecords, holdThisProcessAndItsParentByAscendingIds)
{
    const auto records = processRecords();
    EXPECT_TRUE(std::is_sorted(records.begin(), records.end(),
                               [](const auto& one, const auto& other) { return one.id < other.id; }));
    const auto own =
        std::find_if(records.begin(), records.end(), [](const auto& record) { return record.id == idOf(getpid()); });
    ASSERT_NE(own, records.end());
    EXPECT_EQ(own->parent, idOf(getppid()));
    EXPECT_LE(own->started, processTicks());
}

TEST(ProcessRecords, showAnEndedChildUntilNoticeIsTaken)
{
    const std::uint64_t before = processTicks();
    const pid_t child = fork();
    if (child == 0)
        _exit(0);
    siginfo_t ended{};
    ASSERT_EQ(waitid(P_PID, static_cast<id_t>(child), &ended, WEXITED | WNOWAIT), 0);
    const auto record = processRecord(idOf(child));
    ASSERT_TRUE(record);
    EXPECT_TRUE(record->hasEnded);
    EXPECT_EQ(record->parent, idOf(getpid()));
    EXPECT_GE(record->started, before);
    EXPECT_LE(record->started, processTicks());
    ASSERT_EQ(waitpid(child, nullptr, 0), child);
    EXPECT_FALSE(processRecord(idOf(child)));
}

TEST(TheProgramOfAProcess, isItsFullPath)
{
    EXPECT_EQ(programOf(idOf(getpid())), std::filesystem::read_symlink("/proc/self/exe").string());
    EXPECT_EQ(programOf(0), "");
}

TEST(TheThreadsOfAProcess, holdTheOneThatAsks)
{
    const auto threads = threadsOf(idOf(getpid()));
    EXPECT_NE(std::find(threads.begin(), threads.end(), idOf(gettid())), threads.end());
    EXPECT_TRUE(threadsOf(0).empty());
}
