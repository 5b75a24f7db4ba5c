#include "schedules/staged_view.h"

#include "platform/platform.h"
#include "platform/threads.h"
#include "schedules/staged_threads.h"

namespace Schedules
{

using Platform::platform;

namespace
{
constexpr std::uint32_t PacerPause = 50; // milliseconds
}

StagedView::StagedView(int operation, bool paced, Desk& desk, Record& record)
    : paced_(paced), desk_(desk), record_(record), display_(operation), due_(operation)
{
    ++record_.madeViews;
    record_.view = this;
}

StagedView::~StagedView()
{
    record_.view = nullptr;
    record_.complaints.addUnless(closed_, "a view was deleted before it was closed");
}

void StagedView::create()
{
    ++record_.openViews;
    thread_ = platform().threads.start([this] { run(); });
    waitUntilCreated();
}

void StagedView::waitUntilCreated()
{
    std::unique_lock guard(lock_);
    changed_.wait(guard, [this] { return created_; });
}

void StagedView::close()
{
    {
        const std::lock_guard guard(lock_);
        record_.complaints.addUnless(!closing_, "a view was closed twice");
        closing_ = true;
        changed_.notify_all();
    }
    thread_->wait();
    // What was on its way when the window went.
    shown_.apply(display_.take());
    record_.complaints.addUnless(shown_ == due_.shown, "the display ended with other values than the last ones");
    record_.complaints.addUnless(!hasBeenHidden_ || shown_.visible, "a prompt has left the window hidden");
    closed_ = true;
    --record_.openViews;
}

void StagedView::hide()
{
    ++record_.hides;
    hasBeenHidden_ = true;
    due_.shown.visible = false;
    static_cast<void>(display_.setVisible(false));
    post(Message::Drain);
}

void StagedView::show()
{
    due_.shown.visible = true;
    static_cast<void>(display_.setVisible(true));
    post(Message::Drain);
}

void StagedView::setFileProgress(const wchar_t* fileName, double percent, bool wiping)
{
    due_.setFileProgress(fileName, percent, wiping);
    wakeIf(display_.setFileProgress(fileName, percent, wiping));
}

void StagedView::setTotalProgress(double percent, bool force)
{
    due_.setTotalProgress(percent, force);
    wakeIf(display_.setTotalProgress(percent, force));
}

void StagedView::setElapsedTime(int seconds)
{
    due_.setElapsedTime(seconds);
    wakeIf(display_.setElapsedTime(seconds));
}

void StagedView::setTimeLeft(int seconds)
{
    due_.setTimeLeft(seconds);
    wakeIf(display_.setTimeLeft(seconds));
}

void StagedView::setSpeed(std::uint64_t bytesPerSecond)
{
    due_.setSpeed(bytesPerSecond);
    wakeIf(display_.setSpeed(bytesPerSecond));
}

void StagedView::setElapsedBytes(std::uint64_t bytes)
{
    due_.setElapsedBytes(bytes);
    wakeIf(display_.setElapsedBytes(bytes));
}

void StagedView::setBytesLeft(std::uint64_t bytes)
{
    due_.setBytesLeft(bytes);
    wakeIf(display_.setBytesLeft(bytes));
}

void StagedView::setTotalBytes(std::uint64_t bytes)
{
    due_.setTotalBytes(bytes);
    wakeIf(display_.setTotalBytes(bytes));
}

void StagedView::onPaused()
{
    due_.shown.paused = true;
    static_cast<void>(display_.setPaused(true));
    post(Message::Drain);
}

void StagedView::onResumed()
{
    due_.shown.paused = false;
    static_cast<void>(display_.setPaused(false));
    post(Message::Drain);
}

void StagedView::click(Button button)
{
    const Message messages[] = {Message::Pause, Message::Cancel, Message::Nothing};
    post(messages[static_cast<int>(button)]);
}

void StagedView::post(Message message)
{
    const std::lock_guard guard(lock_);
    posted_.push_back(message);
    changed_.notify_all();
}

void StagedView::wakeIf(bool needed)
{
    if (!needed)
        return;
    if (!paced_)
        return post(Message::Drain);
    const std::lock_guard guard(lock_);
    woken_ = true;
    changed_.notify_all();
}

void StagedView::run()
{
    nameThisThread("display");
    desk_.windowCame(*this);
    if (paced_)
        pacer_ = platform().threads.start([this] { pace(); });
    std::unique_lock guard(lock_);
    created_ = true;
    changed_.notify_all();
    for (;;)
    {
        changed_.wait(guard, [this] { return closing_ || !posted_.empty(); });
        if (closing_) // is sent, and comes before what was posted
            break;
        const Message message = posted_.front();
        posted_.pop_front();
        guard.unlock();
        handle(message);
        guard.lock();
    }
    guard.unlock();
    desk_.windowWent();
    if (pacer_)
        pacer_->wait();
}

void StagedView::handle(Message message)
{
    if (message == Message::Nothing)
        return;
    if (message != Message::Drain)
        press(message);
    drain();
}

void StagedView::press(Message message)
{
    if (message == Message::Cancel)
    {
        if (shown_.paused) // the button is disabled
            return;
        onCancel();
        record_.cancelled = true;
        return;
    }
    const bool resumes = record_.pauses % 2 == 1;
    if (resumes)
        ++record_.pauses;
    onPause();
    if (!resumes)
        ++record_.pauses;
}

void StagedView::drain()
{
    shown_.apply(display_.take());
    desk_.windowShows(shown_.visible, shown_.paused);
}

void StagedView::pace()
{
    nameThisThread("pacer");
    std::unique_lock guard(lock_);
    for (;;)
    {
        changed_.wait(guard, [this] { return closing_ || woken_; });
        if (closing_)
            return;
        woken_ = false;
        posted_.push_back(Message::Drain);
        changed_.notify_all();
        pacerRests_ = true;
        guard.unlock();
        platform().threads.sleep(PacerPause);
        guard.lock();
        pacerRests_ = false;
    }
}

void StagedView::expectUpToDate()
{
    if (created_ && !closing_ && !pacerRests_)
        record_.complaints.addUnless(shown_ == due_.shown, "nobody runs, and the display shows old values");
}

} // namespace Schedules
