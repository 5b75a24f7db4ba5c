#include "statistics/journal.h"

#include "platform/testing_folder.h"
#include "statistics_testing/recorded_statistics.h"

#include <csignal>
#include <sys/resource.h>

namespace StatisticsModule
{
namespace
{

/// No file of this process may grow beyond some bytes, as on a disk that is full.
class FullDisk
{
public:
    explicit FullDisk(rlim_t size)
    {
        ::getrlimit(RLIMIT_FSIZE, &former_);
        handler_ = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{size, former_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        ::setrlimit(RLIMIT_FSIZE, &former_);
        std::signal(SIGXFSZ, handler_);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit former_ = {};
    void (*handler_)(int) = nullptr;
};

} // namespace

TEST(AJournalOnAFullDisk, keepsNoPartOfALine)
{
    const TestingFolder folder;
    const std::filesystem::path file = TestingFolder::fileOf(folder.path()) / "statistics.log";
    Journal journal({file});
    ASSERT_TRUE(journal.record({"SetUserId", {L"one"}}));
    const auto size = std::filesystem::file_size(file);
    {
        const FullDisk disk(size + size / 2);
        EXPECT_FALSE(journal.record({"SetUserId", {L"two"}}));
        EXPECT_EQ(std::filesystem::file_size(file), size);
    }
    EXPECT_TRUE(journal.record({"SetUserId", {L"three"}}));
    EXPECT_EQ(StatisticsTesting::callsIn(file), (std::vector<std::string>{"SetUserId(one)", "SetUserId(three)"}));
}

} // namespace StatisticsModule
