#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>

#include "scenarios/sample_folder.h"
#include "windows/restless_user.h"
#include "windows/running_program.h"

namespace fs = std::filesystem;
using namespace EndToEnd;

namespace
{

constexpr milliseconds EndLimit{60000};
constexpr int UsualSeconds = 5;

} // namespace

/// Wipes whose window is paused, hidden, minimised, closed and cancelled in any order.
class Soak : public testing::Test
{
protected:
    void runJob()
    {
        folder = std::make_unique<SampleFolder>();
        files = folder->addFiles(Count, content);
        program = std::make_unique<RunningProgram>(programUnderTest(),
                                                   quoted(folder->addDeleteJob(files, SampleFolder::Wipe)));
        const Window question = program->window(L"Securely Delete Items");
        ASSERT_TRUE(question);
        wiping = !user->oneIn(6);
        cancelled = false;
        question.clickWithMouse(wiping ? IDYES : IDNO);
        if (wiping)
        {
            ASSERT_NO_FATAL_FAILURE(disturb());
        }
        EXPECT_EQ(program->exitCode(EndLimit), 0);
        EXPECT_TRUE(program->visibleWindows().empty());
        expectEachFileWholeOrGone();
        ++jobs;
    }

    void disturb()
    {
        user->sitsDownAt(program->windowLike(L"Quick Wipe"));
        ASSERT_TRUE(user->progress());
        for (auto left = 5 + user->below(20); left > 0 && user->progress().exists(); --left)
        {
            user->actOnce();
            ASSERT_TRUE(user->isAnswered()) << "the window is stuck";
        }
        cancelled = user->cancel();
        if (cancelled)
            ++cancels;
        else
            EXPECT_EQ(countLeft(), 0) << "the window has gone before its job";
    }

    std::ptrdiff_t countLeft() const
    {
        return std::count_if(files.begin(), files.end(), [](const Path& file) { return fs::exists(file); });
    }

    /// A cancel spoils the file under work at most, and that one keeps its name.
    void expectEachFileWholeOrGone()
    {
        const std::ptrdiff_t left = countLeft();
        const auto spoilt =
            std::count_if(files.begin(), files.end(),
                          [this](const Path& file) { return fs::exists(file) && contentOf(file) != content; });
        EXPECT_LE(spoilt, cancelled ? 1 : 0);
        if (!cancelled)
        {
            EXPECT_EQ(left, wiping ? 0 : Count);
        }
        const auto entries = std::distance(fs::directory_iterator(folder->path()), fs::directory_iterator());
        EXPECT_EQ(entries, left) << "a job file or a file with a name of no meaning has stayed";
    }

    static constexpr int Count = 100;
    const std::string content = std::string(1 << 20, 'x');

    std::unique_ptr<RestlessUser> user;
    std::unique_ptr<SampleFolder> folder;
    std::vector<Path> files;
    std::unique_ptr<RunningProgram> program;
    bool wiping = false;
    bool cancelled = false;
    int jobs = 0;
    int cancels = 0;
    int actions = 0;
    int clicks = 0;
};

TEST_F(Soak, endsEachJobInOrderWhateverIsDoneToItsWindow)
{
    const auto end = std::chrono::steady_clock::now() + soakDuration(UsualSeconds);
    unsigned seed = firstSoakSeed();
    do
    {
        SCOPED_TRACE(seed);
        std::printf("seed %u\n", seed);
        user = std::make_unique<RestlessUser>(seed++);
        ASSERT_NO_FATAL_FAILURE(runJob());
        actions += user->actions();
        clicks += user->clicks();
    } while (!HasFailure() && std::chrono::steady_clock::now() < end);
    std::printf("%d jobs, %d of them cancelled, %d actions, %d clicks\n", jobs, cancels, actions, clicks);
}
