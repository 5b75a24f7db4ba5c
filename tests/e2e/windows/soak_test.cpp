#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <random>
#include <thread>

#include "scenarios/sample_folder.h"
#include "windows/running_program.h"

namespace fs = std::filesystem;
using namespace EndToEnd;

namespace
{

constexpr int PauseButton = 1090;
constexpr int CancelButton = 1226;
constexpr UINT AnswerLimit = 5000;
constexpr milliseconds EndLimit{60000};
constexpr int DefaultSeconds = 5;

/// How long jobs follow one another: the same variable as for the schedules of the unit tests.
std::chrono::seconds duration()
{
    const char* const seconds = std::getenv("JOBRUNNER_CONCURRENCY_SECONDS");
    return std::chrono::seconds(seconds != nullptr && *seconds != '\0' ? std::atoi(seconds) : DefaultSeconds);
}

} // namespace

/// A user without patience: wipes whose window is paused, hidden, minimised, closed and cancelled in any order.
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
        wiping = random() % 6 != 0;
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
        progress = program->windowLike(L"Quick Wipe");
        ASSERT_TRUE(progress);
        for (auto left = 5 + random() % 20; left > 0 && progress.exists(); --left)
        {
            actOnce();
            ASSERT_TRUE(answers() || !progress.exists()) << "the window is stuck";
            ++actions;
        }
        cancel();
    }

    void actOnce()
    {
        switch (random() % 7)
        {
        case 0:
        case 1:
            return pressPause();
        case 2:
            PostMessageW(progress.handle(), WM_SYSCOMMAND, SC_MINIMIZE, 0);
            return expect([this] { return IsIconic(progress.handle()) != FALSE; });
        case 3:
            ShowWindowAsync(progress.handle(), SW_HIDE);
            return expect([this] { return !progress.isVisible(); });
        case 4:
            return bringBack();
        case 5: // neither does anything
            progress.close();
            PostMessageW(progress.handle(), WM_COMMAND, IDCANCEL, 0);
            return;
        default:
            std::this_thread::sleep_for(milliseconds(random() % 300));
        }
    }

    /// Waits for an effect on the window; a job that is over has none.
    void expect(const std::function<bool()>& effect)
    {
        EXPECT_TRUE(waitUntil([&] { return effect() || !progress.exists(); }));
    }

    /// Comes back once the window's thread has taken a message; false when it does not in time.
    bool answers() const
    {
        DWORD_PTR ignored = 0;
        return SendMessageTimeoutW(progress.handle(), WM_NULL, 0, 0, SMTO_NORMAL, AnswerLimit, &ignored) != 0;
    }

    /// Makes a window that the mouse can reach.
    void bringBack()
    {
        ShowWindowAsync(progress.handle(), SW_RESTORE);
        expect([this] { return progress.isVisible() && IsIconic(progress.handle()) == FALSE; });
    }

    void pressPause()
    {
        bringBack();
        const std::wstring before = progress.text(PauseButton);
        progress.clickWithMouse(PauseButton);
        expect([&] { return progress.text(PauseButton) != before; });
        expect([&] { return progress.isEnabled(CancelButton) == (before == L"Resume"); });
        ++clicks;
    }

    void cancel()
    {
        if (progress.text(PauseButton) == L"Resume")
            pressPause();
        bringBack();
        if (!progress.exists())
        {
            EXPECT_EQ(countLeft(), 0) << "the window has gone before its job";
            return;
        }
        progress.clickWithMouse(CancelButton);
        cancelled = true;
        ++clicks;
        ++cancels;
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

    std::mt19937 random;
    std::unique_ptr<SampleFolder> folder;
    std::vector<Path> files;
    std::unique_ptr<RunningProgram> program;
    Window progress;
    bool wiping = false;
    bool cancelled = false;
    int jobs = 0;
    int actions = 0;
    int clicks = 0;
    int cancels = 0;
};

TEST_F(Soak, endsEachJobInOrderWhateverIsDoneToItsWindow)
{
    const auto end = std::chrono::steady_clock::now() + duration();
    unsigned seed = std::random_device{}();
    do
    {
        SCOPED_TRACE(++seed);
        std::printf("seed %u\n", seed);
        random.seed(seed);
        ASSERT_NO_FATAL_FAILURE(runJob());
    } while (!HasFailure() && std::chrono::steady_clock::now() < end);
    std::printf("%d jobs, %d of them cancelled, %d actions, %d clicks\n", jobs, cancels, actions, clicks);
}
