#include "statistics/journal.h"

#include "interfaces/statistics/identifiers.h"
#include "platform/testing_folder.h"
#include "statistics_testing/recorded_statistics.h"

#include <atomic>
#include <thread>

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using StatisticsTesting::callsIn;
using Calls = std::vector<std::string>;

namespace StatisticsModule
{
namespace
{

class AJournal : public testing::Test
{
protected:
    JournalSettings settings(std::uint64_t limit = 1024 * 1024) const { return {file(), limit, 1s, 30s}; }
    fs::path file() const { return TestingFolder::fileOf(folder_.path()) / "state" / "statistics.log"; }
    fs::path older() const { return Journal::olderFileOf(file()); }

    static bool add(Journal& journal, const std::wstring& text) { return journal.record({"SetUserId", {text}}); }
    static std::string contentOf(const fs::path& path)
    {
        std::ifstream stream(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    static std::chrono::steady_clock::duration durationOf(const std::function<void()>& action)
    {
        const auto start = std::chrono::steady_clock::now();
        action();
        return std::chrono::steady_clock::now() - start;
    }

private:
    TestingFolder folder_;
};

} // namespace

TEST_F(AJournal, keepsEveryCallInOrder)
{
    Journal journal(settings());
    EXPECT_TRUE(journal.record({"SetDimension", {std::int64_t{1}, L"6.13"}}));
    EXPECT_TRUE(journal.record({"SendView", {L"a/b", L"Title"}}));
    EXPECT_TRUE(journal.record({"SendViewEvent", {L"a/b", L"do", L"", valueOf(NoEventValue)}}));
    EXPECT_EQ(callsIn(file()),
              (Calls{"SetDimension(1, 6.13)", "SendView(a/b, Title)", "SendViewEvent(a/b, do, , none)"}));
}

TEST_F(AJournal, hasTheCallWhenTheCallIsBack)
{
    Journal journal(settings());
    Journal other(settings());
    add(journal, L"one");
    EXPECT_EQ(callsIn(file()), Calls{"SetUserId(one)"});
    add(other, L"two");
    EXPECT_EQ(callsIn(file()), (Calls{"SetUserId(one)", "SetUserId(two)"}));
}

TEST_F(AJournal, makesNothingBeforeTheFirstCall)
{
    const Journal journal(settings());
    EXPECT_FALSE(fs::exists(file().parent_path()));
}

TEST_F(AJournal, startsAnewWhenALineWouldPassTheLimit)
{
    Journal unlimited(settings());
    add(unlimited, L"1");
    const std::uint64_t length = fs::file_size(file());
    Journal journal(settings(2 * length));
    add(journal, L"2");
    EXPECT_EQ(fs::file_size(file()), 2 * length) << "the limit itself may be reached";
    EXPECT_FALSE(fs::exists(older()));
    add(journal, L"3");
    EXPECT_EQ(callsIn(older()), (Calls{"SetUserId(1)", "SetUserId(2)"}));
    EXPECT_EQ(contentOf(file()).size(), length);
}

TEST_F(AJournal, keepsOneOlderGeneration)
{
    Journal unlimited(settings());
    add(unlimited, L"1");
    Journal journal(settings(fs::file_size(file())));
    for (const wchar_t* text : {L"2", L"3", L"4"})
        ASSERT_TRUE(add(journal, text));
    EXPECT_EQ(callsIn(file()), (Calls{"SetUserId(3)", "SetUserId(4)"}));
    EXPECT_EQ(contentOf(older()).find("\"4\""), std::string::npos);
    const auto entries = fs::directory_iterator(file().parent_path());
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 3) << "two generations and the file that is locked";
}

TEST_F(AJournal, doesNotKeepALineThatIsTooLong)
{
    Journal journal(settings());
    EXPECT_TRUE(add(journal, std::wstring(Journal::LongestLine - 100, L'x')));
    const std::uint64_t before = fs::file_size(file());
    EXPECT_FALSE(add(journal, std::wstring(Journal::LongestLine, L'x')));
    EXPECT_EQ(fs::file_size(file()), before);
    EXPECT_TRUE(add(journal, L"short"));
    EXPECT_EQ(callsIn(file()).back(), "SetUserId(short)");
}

TEST_F(AJournal, takesAwayTheStartOfALineThatAnEndedProcessLeft)
{
    Journal journal(settings());
    add(journal, L"1");
    std::ofstream(file(), std::ios::binary | std::ios::app) << "[\"2026-03-07T04:05:06.078Z\", 47";
    add(journal, L"2");
    EXPECT_EQ(callsIn(file()), (Calls{"SetUserId(1)", "SetUserId(2)"}));
}

TEST_F(AJournal, takesAwayTheStartOfAFirstLine)
{
    fs::create_directories(file().parent_path());
    std::ofstream(file(), std::ios::binary) << "[\"2026";
    Journal journal(settings());
    add(journal, L"1");
    EXPECT_EQ(callsIn(file()), Calls{"SetUserId(1)"});
}

TEST_F(AJournal, givesUpWhenAnotherProcessDoesNotLetGoAndThenDoesNotWaitAgain)
{
    Journal journal(settings());
    add(journal, L"1");
    {
        PrivateFile other(Journal::lockFileOf(file()));
        ASSERT_TRUE(other.tryLock());
        bool kept = true;
        const auto first = durationOf([&] { kept = add(journal, L"2"); });
        EXPECT_FALSE(kept);
        EXPECT_GE(first, 1s);
        EXPECT_LT(first, 5s);
        EXPECT_LT(durationOf([&] { kept = add(journal, L"3"); }), 1s);
        EXPECT_FALSE(kept);
    }
    EXPECT_TRUE(add(journal, L"4")) << "it tries once all the same";
    EXPECT_EQ(callsIn(file()), (Calls{"SetUserId(1)", "SetUserId(4)"}));
}

TEST_F(AJournal, waitsAgainAfterItsRest)
{
    JournalSettings impatient = settings();
    impatient.patience = 20ms;
    impatient.rest = 0ms;
    Journal journal(impatient);
    add(journal, L"1");
    PrivateFile other(Journal::lockFileOf(file()));
    ASSERT_TRUE(other.tryLock());
    EXPECT_GE(durationOf([&] { add(journal, L"2"); }), 20ms);
    EXPECT_GE(durationOf([&] { add(journal, L"3"); }), 20ms);
}

TEST_F(AJournal, waitsForItsTurn)
{
    JournalSettings patient = settings();
    patient.patience = 60s;
    Journal journal(patient);
    add(journal, L"1");
    auto other = std::make_unique<PrivateFile>(Journal::lockFileOf(file()));
    ASSERT_TRUE(other->tryLock());
    std::atomic<bool> kept{false};
    std::thread writer([&] { kept = add(journal, L"2"); });
    std::this_thread::sleep_for(50ms);
    EXPECT_EQ(callsIn(file()).size(), 1U);
    other.reset();
    writer.join();
    EXPECT_TRUE(kept);
    EXPECT_EQ(callsIn(file()).size(), 2U);
}

TEST_F(AJournal, keepsNothingWhereItCannotWrite)
{
    Journal nowhere{JournalSettings{}};
    EXPECT_FALSE(add(nowhere, L"x"));

    fs::create_directories(file());
    Journal folder(settings());
    EXPECT_FALSE(add(folder, L"x"));

    fs::remove_all(file().parent_path());
    std::ofstream(file().parent_path()) << "a file where its folder should be";
    Journal blocked(settings());
    EXPECT_FALSE(add(blocked, L"x"));
}

TEST_F(AJournal, comesBackWhenItsFilesAreRemovedMeanwhile)
{
    Journal journal(settings());
    add(journal, L"1");
    fs::remove_all(file().parent_path());
    EXPECT_TRUE(add(journal, L"2"));
    EXPECT_EQ(callsIn(file()), Calls{"SetUserId(2)"});
}

TEST_F(AJournal, isNotKeptFromItsLineByAReader)
{
    Journal journal(settings());
    add(journal, L"1");
    std::ifstream reader(file(), std::ios::binary);
    ASSERT_TRUE(reader.get());
    EXPECT_TRUE(add(journal, L"2"));
}

} // namespace StatisticsModule
