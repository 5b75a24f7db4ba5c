#include "windows/progress/terminal/progress_window_view.h"

#include "platform/posix/terminal.h"

#include <tuple>

namespace JobRunner
{

namespace
{

constexpr std::chrono::milliseconds FrameTime{100};
/// A key is waited for in steps, so that `close` does not wait longer than one.
constexpr std::chrono::milliseconds KeyStep{20};
constexpr std::chrono::seconds PrintTime{1};

} // namespace

ProgressWindowView::ProgressWindowView(int operation, Platform::Terminal& terminal)
    : display_(operation), terminal_(terminal)
{
}

ProgressWindowView::~ProgressWindowView()
{
    close();
}

void ProgressWindowView::create()
{
    thread_ = std::thread([this] { run(); });
    waitUntilCreated();
}

void ProgressWindowView::waitUntilCreated()
{
    std::unique_lock guard(lock_);
    changed_.wait(guard, [this] { return created_; });
}

void ProgressWindowView::close()
{
    if (!thread_.joinable())
        return;
    {
        const std::lock_guard guard(lock_);
        closing_ = true;
    }
    changed_.notify_all();
    thread_.join();
}

// The thread looks for changes at each frame, so no setter wakes it.

bool ProgressWindowView::isHidden()
{
    return display_.isHidden();
}

void ProgressWindowView::hide()
{
    std::ignore = display_.setVisible(false);
}

void ProgressWindowView::show()
{
    std::ignore = display_.setVisible(true);
}

void ProgressWindowView::setFileProgress(const wchar_t* fileName, double percent, bool wiping)
{
    std::ignore = display_.setFileProgress(fileName, percent, wiping);
}

void ProgressWindowView::setTotalProgress(double percent, bool force)
{
    std::ignore = display_.setTotalProgress(percent, force);
}

void ProgressWindowView::setElapsedTime(int seconds)
{
    std::ignore = display_.setElapsedTime(seconds);
}

void ProgressWindowView::setTimeLeft(int seconds)
{
    std::ignore = display_.setTimeLeft(seconds);
}

void ProgressWindowView::setSpeed(std::uint64_t bytesPerSecond)
{
    std::ignore = display_.setSpeed(bytesPerSecond);
}

void ProgressWindowView::setElapsedBytes(std::uint64_t bytes)
{
    std::ignore = display_.setElapsedBytes(bytes);
}

void ProgressWindowView::setBytesLeft(std::uint64_t bytes)
{
    std::ignore = display_.setBytesLeft(bytes);
}

void ProgressWindowView::setTotalBytes(std::uint64_t bytes)
{
    std::ignore = display_.setTotalBytes(bytes);
}

void ProgressWindowView::onPaused()
{
    std::ignore = display_.setPaused(true);
}

void ProgressWindowView::onResumed()
{
    std::ignore = display_.setPaused(false);
}

void ProgressWindowView::run()
{
    {
        const std::lock_guard guard(lock_);
        created_ = true;
    }
    changed_.notify_all();
    while (!closing())
    {
        draw();
        waitForFrame();
    }
    nextPrint_ = {}; // the last state is always told
    draw();
    terminal_.clearStatus();
    const std::lock_guard guard(lock_);
    created_ = false;
}

void ProgressWindowView::draw()
{
    screen_.apply(display_.take());
    if (!screen_.visible())
        return terminal_.clearStatus();
    if (terminal_.outputIsTerminal())
        terminal_.drawStatus(screen_.lines(tick_++, terminal_.inputIsTerminal()));
    else if (Clock::now() >= nextPrint_)
        printSummary();
}

void ProgressWindowView::printSummary()
{
    const std::wstring summary = screen_.summary();
    if (summary == printed_)
        return;
    Platform::Terminal::Prompt(terminal_).print(summary + L'\n');
    printed_ = summary;
    nextPrint_ = Clock::now() + PrintTime;
}

void ProgressWindowView::waitForFrame()
{
    if (!screen_.visible() || !terminal_.inputIsTerminal())
    {
        std::unique_lock guard(lock_);
        changed_.wait_for(guard, FrameTime, [this] { return closing_; });
        return;
    }
    const auto end = Clock::now() + FrameTime;
    while (Clock::now() < end && !closing())
        if (const std::optional<wchar_t> key = terminal_.pollKey(KeyStep))
            return press(*key);
}

void ProgressWindowView::press(wchar_t key)
{
    screen_.apply(display_.take()); // what the buttons are by now
    if (!screen_.visible())
        return;
    if (key == L'p')
        onPause();
    if (key == L'c' && !screen_.paused())
        onCancel();
}

bool ProgressWindowView::closing()
{
    const std::lock_guard guard(lock_);
    return closing_;
}

} // namespace JobRunner
