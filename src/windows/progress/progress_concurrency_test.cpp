#include "windows/progress/progress_window.h"

#include "fakes/fake_platform.h"
#include "fakes/fake_views.h"
#include "windows/progress/i_progress_window_view.h"
#include "windows/progress/progress_display.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <random>
#include <thread>

using namespace JobRunner;

namespace
{

/// A display with a thread of its own that takes the changes and clicks its buttons at random.
class ClickingView : public IProgressWindowView
{
public:
    ClickingView(int operation, unsigned seed) : display_(operation), random_(seed) {}
    ~ClickingView() override { EXPECT_FALSE(thread_.joinable()) << "deleted before it was closed"; }

    void create() override
    {
        thread_ = std::thread([this] { run(); });
        waitUntilCreated();
    }

    void waitUntilCreated() override
    {
        std::unique_lock guard(lock_);
        changed_.wait(guard, [this] { return created_; });
    }

    void close() override
    {
        {
            const std::lock_guard guard(lock_);
            closing_ = true;
        }
        changed_.notify_all();
        thread_.join();
    }

    bool isHidden() override { return display_.isHidden(); }
    void hide() override { wakeIf(display_.setVisible(false)); }
    void show() override { wakeIf(display_.setVisible(true)); }
    void setFileProgress(const wchar_t* name, double percent, bool wiping) override
    {
        wakeIf(display_.setFileProgress(name, percent, wiping));
    }
    void setTotalProgress(double percent, bool force) override { wakeIf(display_.setTotalProgress(percent, force)); }
    void setElapsedTime(int seconds) override { wakeIf(display_.setElapsedTime(seconds)); }
    void setTimeLeft(int seconds) override { wakeIf(display_.setTimeLeft(seconds)); }
    void setSpeed(std::uint64_t speed) override { wakeIf(display_.setSpeed(speed)); }
    void setElapsedBytes(std::uint64_t bytes) override { wakeIf(display_.setElapsedBytes(bytes)); }
    void setBytesLeft(std::uint64_t bytes) override { wakeIf(display_.setBytesLeft(bytes)); }
    void setTotalBytes(std::uint64_t bytes) override { wakeIf(display_.setTotalBytes(bytes)); }
    void onPaused() override { wakeIf(display_.setPaused(true)); }
    void onResumed() override { wakeIf(display_.setPaused(false)); }

private:
    void wakeIf(bool wake)
    {
        if (!wake)
            return;
        const std::lock_guard guard(lock_);
        woken_ = true;
        changed_.notify_all();
    }

    void run()
    {
        std::unique_lock guard(lock_);
        created_ = true;
        changed_.notify_all();
        while (!closing_)
        {
            changed_.wait(guard, [this] { return woken_ || closing_; });
            woken_ = false;
            guard.unlock();
            display_.take();
            click();
            guard.lock();
        }
    }

    void click()
    {
        if (random_() % 4 == 0)
            onPause();
        if (random_() % 64 == 0)
            onCancel();
    }

    ProgressDisplay display_;
    std::mt19937 random_;
    std::thread thread_;
    std::mutex lock_;
    std::condition_variable changed_;
    bool created_ = false;
    bool woken_ = false;
    bool closing_ = false;
};

struct ClickingViews : Fakes::FakeViewFactory
{
    explicit ClickingViews(unsigned seed_) : seed(seed_) {}

    std::unique_ptr<IProgressWindowView> createProgressWindowView(int operation) override
    {
        return std::make_unique<ClickingView>(operation, seed + made++);
    }

    const unsigned seed;
    std::atomic<unsigned> made = 0;
};

/// One random operation of an engine's thread.
void report(ProgressWindow& window, std::mt19937& random)
{
    switch (random() % 10)
    {
    case 0:
        return window.setCurrentFile(random() % 2 ? L"first" : L"second");
    case 1:
        return window.setTotalSize(random() % 100'000);
    case 2:
        return window.finishFile();
    case 3:
        return window.reportWipeProgress(random() % 1000);
    case 4:
        return window.setHalfFileMode(random() % 2 == 0);
    case 5:
        window.isCancelled();
        window.isPaused();
        return;
    default:
        window.reportFileProgress(random() % 1000, 1000);
    }
}

/// One random operation of a thread that prompts or runs the job.
void direct(ProgressWindow& window, std::mt19937& random)
{
    switch (random() % 6)
    {
    case 0:
        return window.openWindow(OperationEncrypt);
    case 1:
        return window.closeWindow();
    case 2:
        return window.hideWindow();
    case 3:
        return window.showWindow();
    case 4:
        return window.togglePause();
    default:
        return window.requestCancel();
    }
}

/// Ends the program when a schedule blocks for good.
class Watchdog
{
public:
    explicit Watchdog(std::chrono::seconds limit) : thread_([this, limit] { watch(limit); }) {}

    ~Watchdog()
    {
        {
            const std::lock_guard guard(lock_);
            done_ = true;
        }
        changed_.notify_all();
        thread_.join();
    }

private:
    void watch(std::chrono::seconds limit)
    {
        std::unique_lock guard(lock_);
        if (changed_.wait_for(guard, limit, [this] { return done_; }))
            return;
        std::fputs("a schedule is blocked for good\n", stderr);
        std::abort();
    }

    std::mutex lock_;
    std::condition_variable changed_;
    bool done_ = false;
    std::thread thread_;
};

std::chrono::seconds duration()
{
    const char* seconds = std::getenv("JOBRUNNER_CONCURRENCY_SECONDS");
    return std::chrono::seconds(seconds && *seconds ? std::atoi(seconds) : 1);
}

void runSchedule(unsigned seed)
{
    ClickingViews views(seed);
    setViewFactory(&views);
    {
        ProgressWindow window;
        window.openWindow(OperationDecrypt);
        const auto work = [&window](auto operation, unsigned threadSeed, int steps)
        {
            std::mt19937 random(threadSeed);
            for (int step = 0; step < steps; ++step)
                operation(window, random);
        };
        std::vector<std::thread> threads;
        for (unsigned i = 0; i < 3; ++i)
            threads.emplace_back(work, report, seed * 8 + i, 1000);
        for (unsigned i = 3; i < 5; ++i)
            threads.emplace_back(work, direct, seed * 8 + i, 100);
        for (std::thread& thread : threads)
            thread.join();
    }
    setViewFactory(nullptr);
}

} // namespace

// Races are the sanitizer's to find.
TEST(ProgressConcurrency, survivesReportsAndClicksAtRandom)
{
    const Watchdog watchdog(duration() + std::chrono::seconds(60));
    Fakes::FakePlatform platform;
    const auto end = std::chrono::steady_clock::now() + duration();
    unsigned seed = 1;
    do
        runSchedule(seed++);
    while (std::chrono::steady_clock::now() < end);
}

// The click that waits for the lock while the window closes, over and over.
TEST(ProgressConcurrency, closesWhileItsButtonIsPressed)
{
    const Watchdog watchdog(std::chrono::seconds(60));
    Fakes::FakePlatform platform;
    ClickingViews views(7);
    setViewFactory(&views);
    ProgressWindow window;
    for (int round = 0; round < 300; ++round)
    {
        window.openWindow(OperationEncrypt);
        window.reportFileProgress(static_cast<std::uint64_t>(round % 100), 100);
        window.closeWindow();
    }
    setViewFactory(nullptr);
    EXPECT_EQ(views.made, 300u);
}
