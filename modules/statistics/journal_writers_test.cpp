#include "statistics/journal.h"

#include "platform/testing_folder.h"
#include "statistics_testing/modules_of_build.h"
#include "statistics_testing/recorded_statistics.h"
#include "statistics_testing/started_program.h"

#include <cstdio>
#include <cstdlib>
#include <map>
#include <thread>

namespace fs = std::filesystem;
using namespace std::chrono_literals;

namespace StatisticsModule
{
namespace
{

constexpr std::uint64_t Unlimited = std::uint64_t{1} << 40;
constexpr std::uint64_t Small = 64 * 1024;

/// How long processes write: the same variable as for the schedules of the other tests.
int milliseconds()
{
    const char* const seconds = std::getenv("JOBRUNNER_CONCURRENCY_SECONDS");
    return seconds && *seconds ? std::atoi(seconds) * 1000 : 1000;
}

/// What a writer has in the journal.
struct Written
{
    std::vector<int> numbers;
    /// How many there were, as a process says at its end.
    int count = -1;
};

/// What each writer has in the journal; nothing else may be there.
std::map<std::string, Written> writersIn(const fs::path& file)
{
    std::map<std::string, Written> writers;
    for (const std::string& call : StatisticsTesting::callsIn(file))
    {
        char name[16] = {};
        int number = 0;
        if (std::sscanf(call.c_str(), "SendEvent(%15[a-z0-9], %d)", name, &number) == 2)
            writers[name].numbers.push_back(number);
        else if (std::sscanf(call.c_str(), "SetDimension(%d, %15[a-z0-9])", &number, name) == 2)
            writers[name].count = number;
        else
            ADD_FAILURE() << call;
    }
    return writers;
}

/// True when each number is one more than the one before.
bool haveNoGap(const std::vector<int>& numbers)
{
    return std::adjacent_find(numbers.begin(), numbers.end(),
                              [](int first, int second) { return second != first + 1; }) == numbers.end();
}

class ManyWriters : public testing::Test
{
protected:
    fs::path file() const { return TestingFolder::fileOf(folder_.path()) / "statistics.log"; }

    /// Each has a journal of its own if `own` is true.
    void writeInThreads(std::uint64_t limit, bool own)
    {
        const JournalSettings settings{file(), limit, 60s, 0s};
        Journal shared(settings);
        std::vector<std::thread> threads;
        for (int index = 0; index < Threads; ++index)
            threads.emplace_back(
                [&, index]
                {
                    Journal single(settings);
                    Journal& journal = own ? single : shared;
                    const std::wstring name = L"thread" + std::to_wstring(index);
                    for (std::int64_t count = 0; count < CallsOfThread; ++count)
                        EXPECT_TRUE(journal.record({"SendEvent", {name, count}}));
                });
        for (std::thread& thread : threads)
            thread.join();
    }

    void expectAllCallsOfThreads()
    {
        const auto writers = writersIn(file());
        EXPECT_EQ(writers.size(), std::size_t{Threads});
        for (const auto& [name, own] : writers)
        {
            EXPECT_EQ(own.numbers.front(), 0) << name;
            EXPECT_EQ(own.numbers.size(), std::size_t{CallsOfThread}) << name;
            EXPECT_TRUE(haveNoGap(own.numbers)) << name;
        }
    }

    /// Ten processes that write for a while.
    std::vector<StatisticsTesting::StartedProgram> startWriters(std::uint64_t limit, int duration)
    {
        const fs::path own = StatisticsTesting::ownProgram();
        const fs::path writer = own.parent_path() / ("statistics_writer" + own.extension().string());
        std::vector<StatisticsTesting::StartedProgram> writers;
        for (int index = 0; index < Processes; ++index)
            writers.emplace_back(writer,
                                 std::vector<std::string>{file().string(), std::to_string(limit),
                                                          std::to_string(duration), "process" + std::to_string(index)});
        return writers;
    }
    void writeInProcesses(std::uint64_t limit)
    {
        auto writers = startWriters(limit, milliseconds());
        for (auto& one : writers)
            EXPECT_EQ(one.exitCode(), 0) << "a call was not kept";
    }

    static constexpr int Threads = 8;
    static constexpr int CallsOfThread = 100;
    static constexpr int Processes = 10;

private:
    TestingFolder folder_;
};

} // namespace

TEST_F(ManyWriters, ofOneJournalLoseNoCall)
{
    writeInThreads(Unlimited, false);
    expectAllCallsOfThreads();
}

TEST_F(ManyWriters, withAJournalEachLoseNoCall)
{
    writeInThreads(Unlimited, true);
    expectAllCallsOfThreads();
}

TEST_F(ManyWriters, haveTheirNewestCallsWholeWhenTheJournalIsFull)
{
    constexpr std::uint64_t limit = 4096;
    writeInThreads(limit, false);
    std::size_t count = 0;
    for (const auto& [name, own] : writersIn(file()))
    {
        EXPECT_EQ(own.numbers.back(), CallsOfThread - 1) << name;
        EXPECT_TRUE(haveNoGap(own.numbers)) << name;
        count += own.numbers.size();
    }
    EXPECT_GT(count, std::size_t{limit / 100}) << "the older generation is there, too";
    EXPECT_LE(fs::file_size(file()), limit);
    EXPECT_LE(fs::file_size(Journal::olderFileOf(file())), limit);
}

TEST_F(ManyWriters, inTenProcessesLoseNoCall)
{
    writeInProcesses(Unlimited);
    const auto writers = writersIn(file());
    EXPECT_EQ(writers.size(), std::size_t{Processes});
    std::size_t count = 0;
    for (const auto& [name, own] : writers)
    {
        EXPECT_EQ(own.numbers.front(), 0) << name;
        EXPECT_EQ(static_cast<int>(own.numbers.size()), own.count) << name;
        EXPECT_TRUE(haveNoGap(own.numbers)) << name;
        count += own.numbers.size();
    }
    std::printf("ten processes kept %zu calls in %d ms\n", count, milliseconds());
}

TEST_F(ManyWriters, inTenProcessesKeepTheJournalBounded)
{
    writeInProcesses(Small);
    int ended = 0;
    for (const auto& [name, own] : writersIn(file()))
    {
        EXPECT_TRUE(haveNoGap(own.numbers)) << name;
        ended += own.count >= 0 ? 1 : 0;
        EXPECT_TRUE(own.numbers.empty() || own.count < 0 || own.numbers.back() == own.count - 1) << name;
    }
    EXPECT_GT(ended, 0);
    EXPECT_LE(fs::file_size(file()), Small);
    EXPECT_LE(fs::file_size(Journal::olderFileOf(file())), Small);
}

TEST_F(ManyWriters, thatAreKilledLeaveWholeLines)
{
    constexpr int Forever = 600'000;
    Journal journal({file(), Unlimited, 60s, 0s});
    auto writers = startWriters(Unlimited, Forever);
    for (auto& one : writers)
    {
        const auto before = fs::exists(file()) ? fs::file_size(file()) : 0;
        while (!fs::exists(file()) || fs::file_size(file()) < before + 2000)
            std::this_thread::sleep_for(1ms);
        one.kill();
    }
    for (auto& one : writers)
        EXPECT_NE(one.exitCode(), 0);
    EXPECT_TRUE(journal.record({"SendEvent", {L"last", std::int64_t{0}}})) << "no lock is left";
    const auto left = writersIn(file());
    EXPECT_TRUE(left.contains("last"));
    for (const auto& [name, own] : left)
        EXPECT_TRUE(haveNoGap(own.numbers)) << name;
}

} // namespace StatisticsModule
