#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace JobRunner
{

enum class TaskbarState
{
    Indeterminate,
    Value,
};

/// What changed on the display since the last time, newest value of each item, ready to be shown.
struct ProgressChanges
{
    std::optional<std::wstring> fileText;
    std::optional<int> filePosition;
    std::optional<bool> marquee; ///< true starts it, false ends it; comes before the position
    std::optional<std::wstring> totalText;
    std::optional<int> totalPosition;
    std::optional<std::wstring> title;
    std::optional<TaskbarState> taskbar;
    int taskbarValue = 0; ///< of `TaskbarTotal`
    std::optional<std::wstring> elapsedTime;
    std::optional<std::wstring> timeLeft;
    std::optional<std::wstring> speed;
    std::optional<std::wstring> elapsedBytes;
    std::optional<std::wstring> bytesLeft;
    std::optional<std::wstring> totalBytes;
    std::optional<bool> visible;
    std::optional<bool> paused;
};

/// Total of the taskbar's value. 99 and not 100 is intended: a job that is done shows a full taskbar bar early.
inline constexpr int TaskbarTotal = 99;

/// The mailbox between those who report and the display's thread. A setter keeps the newest value of its item,
/// and nothing when it equals the last value shown; the display's thread takes what has changed. Setters may be
/// called on any thread, cost a fraction of a microsecond, and never wait for the display.
class ProgressDisplay
{
public:
    explicit ProgressDisplay(int operation);
    ~ProgressDisplay();

    // Each setter answers true when the display's thread has to be woken: at most once between two `take`s.
    [[nodiscard]] bool setFileProgress(const wchar_t* fileName, double percent, bool wiping);
    [[nodiscard]] bool setTotalProgress(double percent, bool force);
    [[nodiscard]] bool setElapsedTime(int seconds);
    [[nodiscard]] bool setTimeLeft(int seconds);
    [[nodiscard]] bool setSpeed(std::uint64_t bytesPerSecond);
    [[nodiscard]] bool setElapsedBytes(std::uint64_t bytes);
    [[nodiscard]] bool setBytesLeft(std::uint64_t bytes);
    [[nodiscard]] bool setTotalBytes(std::uint64_t bytes);
    [[nodiscard]] bool setVisible(bool visible);
    [[nodiscard]] bool setPaused(bool paused);
    /// True until `setVisible(true)`.
    bool isHidden();

    /// Takes what has changed. Formats the texts outside the lock. Display's thread only.
    ProgressChanges take();

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace JobRunner
