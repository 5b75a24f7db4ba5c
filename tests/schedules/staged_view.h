#pragma once

#include "platform/threads.h"
#include "schedules/desk.h"
#include "schedules/record.h"
#include "schedules/shown_progress.h"
#include "windows/progress/i_progress_window_view.h"

#include <condition_variable>
#include <deque>
#include <mutex>

namespace Schedules
{

/// A progress window without a screen: the mailbox that ships, and a thread that does what the dialog's thread does.
/// What the user does is shown at once. With a pacer the other wakes come through its thread, which lets the display
/// rest between them.
class StagedView final : public JobRunner::IProgressWindowView, public Clickable
{
public:
    StagedView(int operation, bool paced, Desk& desk, Record& record);
    ~StagedView() override;

    void create() override;
    void waitUntilCreated() override;
    void close() override;
    bool isHidden() override { return display_.isHidden(); }
    void hide() override;
    void show() override;
    void setFileProgress(const wchar_t* fileName, double percent, bool wiping) override;
    void setTotalProgress(double percent, bool force) override;
    void setElapsedTime(int seconds) override;
    void setTimeLeft(int seconds) override;
    void setSpeed(std::uint64_t bytesPerSecond) override;
    void setElapsedBytes(std::uint64_t bytes) override;
    void setBytesLeft(std::uint64_t bytes) override;
    void setTotalBytes(std::uint64_t bytes) override;
    void onPaused() override;
    void onResumed() override;

    void click(Button button) override;

    /// While nobody runs: the display shows what it has to, unless its pacer rests.
    void expectUpToDate();

private:
    enum class Message
    {
        Drain,
        Pause,
        Cancel,
        Nothing,
    };

    void post(Message message);
    void wakeIf(bool needed);

    // Thread of the window.
    void run();
    void handle(Message message);
    void press(Message message);
    void drain();

    // Thread of the pacer.
    void pace();

    const bool paced_;
    Desk& desk_;
    Record& record_;
    JobRunner::ProgressDisplay display_;
    LastValues due_; ///< guarded by the lock of those who set
    ShownProgress shown_;
    bool hasBeenHidden_ = false; ///< as `due_`

    std::mutex lock_;
    std::condition_variable changed_;
    std::deque<Message> posted_;
    bool created_ = false;
    bool closing_ = false;
    bool closed_ = false;
    bool woken_ = false;
    bool pacerRests_ = false;
    std::unique_ptr<Platform::Thread> thread_;
    std::unique_ptr<Platform::Thread> pacer_;
};

} // namespace Schedules
