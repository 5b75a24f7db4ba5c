#include "windows/progress/progress_display.h"

#include "systemutilities/progress_arithmetic.h"
#include "systemutilities/shell_utilities.h"
#include "windows/progress/i_progress_window_view.h"
#include "windows/progress/progress_texts.h"

#include <mutex>
#include <utility>

namespace JobRunner
{

namespace
{

constexpr unsigned MaximumNameLength = 50;

int roundedPercent(double percent)
{
    using namespace Halden::SystemUtilities;
    return cutToInteger(RoundTo(percent, 0));
}

struct FileLine
{
    std::wstring name;
    double percent = 0;
    bool wiping = false;
};

struct TotalLine
{
    double percent = 0;
    /// Percent for the title, decided when the line was set.
    std::optional<int> titlePercent;
};

/// The newest value of each item that changed, as numbers.
struct Pending
{
    std::optional<FileLine> file;
    std::optional<int> filePosition;
    std::optional<TotalLine> total;
    std::optional<bool> marquee;
    std::optional<int> elapsedTime;
    std::optional<int> timeLeft;
    std::optional<std::uint64_t> speed;
    std::optional<std::uint64_t> elapsedBytes;
    std::optional<std::uint64_t> bytesLeft;
    std::optional<std::uint64_t> totalBytes;
    std::optional<bool> visible;
    std::optional<bool> paused;
};

/// The last value of each item. The zeros are intended: a first value of 0 changes nothing, and the item keeps
/// the text it was made with. Only the time left has no value at first.
struct Last
{
    std::wstring fileName;
    double filePercent = 0;
    double totalPercent = 0;
    int elapsedTime = 0;
    std::optional<int> timeLeft;
    std::uint64_t speed = 0;
    std::uint64_t elapsedBytes = 0;
    std::uint64_t bytesLeft = 0;
    std::uint64_t totalBytes = 0;
};

template <class Number> std::optional<std::wstring> textOf(std::optional<Number> number, std::wstring (*format)(Number))
{
    if (!number)
        return std::nullopt;
    return format(*number);
}

void describeFile(ProgressChanges& changes, const FileLine& line)
{
    const std::wstring name = Halden::SystemUtilities::compactPath(line.name, MaximumNameLength);
    changes.fileText = fileProgressText(name, line.percent, line.wiping);
}

void describeTotal(ProgressChanges& changes, const TotalLine& line, int operation)
{
    changes.totalText = totalProgressText(line.percent);
    changes.title = progressTitle(operation, line.titlePercent);
    const int rounded = roundedPercent(line.percent);
    if (line.percent != UnknownPercent)
        changes.totalPosition = rounded;
    // A known percent that rounds to -1 counts as unknown here too.
    changes.taskbar = rounded == -1 ? TaskbarState::Indeterminate : TaskbarState::Value;
    changes.taskbarValue = rounded;
}

} // namespace

struct ProgressDisplay::State
{
    explicit State(int operation_) : operation(operation_) {}

    template <class Value, class Shown> bool change(Shown& shown, std::optional<Value>& item, Value value)
    {
        const std::lock_guard guard(lock);
        if (shown == value)
            return false;
        shown = value;
        item = value;
        return wake();
    }

    bool wake() { return !std::exchange(woken, true); }

    const int operation;
    std::mutex lock;
    bool woken = false;
    bool hidden = true;
    Last last;
    Pending pending;
};

ProgressDisplay::ProgressDisplay(int operation) : state_(std::make_unique<State>(operation)) {}

ProgressDisplay::~ProgressDisplay() = default;

bool ProgressDisplay::setFileProgress(const wchar_t* fileName, double percent, bool wiping)
{
    State& state = *state_;
    const std::lock_guard guard(state.lock);
    const bool samePercent = percent == state.last.filePercent;
    const bool sameName = state.last.fileName == fileName;
    // Intended: a change of `wiping` alone is not shown.
    if (sameName && samePercent)
        return false;
    if (!sameName)
        state.last.fileName = fileName;
    state.last.filePercent = percent;
    if (!state.pending.file)
        state.pending.file.emplace();
    state.pending.file->name = state.last.fileName;
    state.pending.file->percent = percent;
    state.pending.file->wiping = wiping;
    if (!samePercent)
        state.pending.filePosition = roundedPercent(percent);
    return state.wake();
}

bool ProgressDisplay::setTotalProgress(double percent, bool force)
{
    State& state = *state_;
    const std::lock_guard guard(state.lock);
    if (percent == state.last.totalPercent && !force)
        return false;
    if (percent == UnknownPercent)
        state.pending.marquee = true;
    else if (state.last.totalPercent == UnknownPercent)
        state.pending.marquee = false;
    state.pending.total = TotalLine{percent, std::nullopt};
    // Intended: the total bytes of an earlier refresh decide, for they come after the percent in each one.
    if (state.last.totalBytes != 0)
        state.pending.total->titlePercent = roundedPercent(percent);
    state.last.totalPercent = percent;
    return state.wake();
}

bool ProgressDisplay::setElapsedTime(int seconds)
{
    return state_->change(state_->last.elapsedTime, state_->pending.elapsedTime, seconds);
}

bool ProgressDisplay::setTimeLeft(int seconds)
{
    return state_->change(state_->last.timeLeft, state_->pending.timeLeft, seconds);
}

bool ProgressDisplay::setSpeed(std::uint64_t bytesPerSecond)
{
    return state_->change(state_->last.speed, state_->pending.speed, bytesPerSecond);
}

bool ProgressDisplay::setElapsedBytes(std::uint64_t bytes)
{
    return state_->change(state_->last.elapsedBytes, state_->pending.elapsedBytes, bytes);
}

bool ProgressDisplay::setBytesLeft(std::uint64_t bytes)
{
    return state_->change(state_->last.bytesLeft, state_->pending.bytesLeft, bytes);
}

bool ProgressDisplay::setTotalBytes(std::uint64_t bytes)
{
    return state_->change(state_->last.totalBytes, state_->pending.totalBytes, bytes);
}

bool ProgressDisplay::setVisible(bool visible)
{
    const std::lock_guard guard(state_->lock);
    state_->hidden = !visible;
    state_->pending.visible = visible;
    return state_->wake();
}

bool ProgressDisplay::setPaused(bool paused)
{
    const std::lock_guard guard(state_->lock);
    state_->pending.paused = paused;
    return state_->wake();
}

bool ProgressDisplay::isHidden()
{
    const std::lock_guard guard(state_->lock);
    return state_->hidden;
}

ProgressChanges ProgressDisplay::take()
{
    Pending pending;
    {
        const std::lock_guard guard(state_->lock);
        std::swap(pending, state_->pending);
        state_->woken = false;
    }
    ProgressChanges changes;
    if (pending.file)
        describeFile(changes, *pending.file);
    changes.filePosition = pending.filePosition;
    changes.marquee = pending.marquee;
    if (pending.total)
        describeTotal(changes, *pending.total, state_->operation);
    changes.elapsedTime = textOf(pending.elapsedTime, timeText);
    changes.timeLeft = textOf(pending.timeLeft, timeText);
    changes.speed = textOf(pending.speed, speedText);
    changes.elapsedBytes = textOf(pending.elapsedBytes, bytesText);
    changes.bytesLeft = textOf(pending.bytesLeft, bytesText);
    changes.totalBytes = textOf(pending.totalBytes, bytesText);
    changes.visible = pending.visible;
    changes.paused = pending.paused;
    return changes;
}

} // namespace JobRunner
