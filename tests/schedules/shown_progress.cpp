#include "schedules/shown_progress.h"

#include "windows/progress/i_progress_window_view.h"
#include "windows/progress/progress_texts.h"

namespace Schedules
{

using namespace JobRunner;

namespace
{

template <class Value> void put(Value& shown, const std::optional<Value>& change)
{
    if (change)
        shown = *change;
}

template <class Number> void write(std::wstring& text, Number& last, Number number, std::wstring (*format)(Number))
{
    if (number == last)
        return;
    last = number;
    text = format(number);
}

} // namespace

void ShownProgress::apply(const ProgressChanges& changes)
{
    put(file, changes.fileText);
    put(fileBar, changes.filePosition);
    put(marquee, changes.marquee);
    put(total, changes.totalText);
    put(totalBar, changes.totalPosition);
    put(title, changes.title);
    if (changes.taskbar)
        taskbarCounts = *changes.taskbar == TaskbarState::Value;
    if (changes.taskbar && taskbarCounts)
        taskbarValue = changes.taskbarValue;
    put(elapsedTime, changes.elapsedTime);
    put(timeLeft, changes.timeLeft);
    put(speed, changes.speed);
    put(elapsedBytes, changes.elapsedBytes);
    put(bytesLeft, changes.bytesLeft);
    put(totalBytes, changes.totalBytes);
    put(visible, changes.visible);
    put(paused, changes.paused);
}

void LastValues::setFileProgress(const std::wstring& name, double percent, bool wiping)
{
    if (name == name_ && percent == filePercent_)
        return;
    shown.file = fileProgressText(name, percent, wiping);
    shown.fileBar = static_cast<int>(percent);
    name_ = name;
    filePercent_ = percent;
}

void LastValues::setTotalProgress(double percent, bool force)
{
    if (percent == totalPercent_ && !force)
        return;
    const int whole = static_cast<int>(percent);
    shown.total = totalProgressText(percent);
    shown.marquee = percent == UnknownPercent;
    shown.taskbarCounts = !shown.marquee;
    if (!shown.marquee)
        shown.totalBar = shown.taskbarValue = whole;
    shown.title = progressTitle(operation_, totalBytes_ == 0 ? std::nullopt : std::optional(whole));
    totalPercent_ = percent;
}

void LastValues::setElapsedTime(int seconds)
{
    write(shown.elapsedTime, elapsedTime_, seconds, timeText);
}

void LastValues::setTimeLeft(int seconds)
{
    shown.timeLeft = timeText(seconds);
}

void LastValues::setSpeed(std::uint64_t bytesPerSecond)
{
    write(shown.speed, speed_, bytesPerSecond, speedText);
}

void LastValues::setElapsedBytes(std::uint64_t bytes)
{
    write(shown.elapsedBytes, elapsedBytes_, bytes, bytesText);
}

void LastValues::setBytesLeft(std::uint64_t bytes)
{
    write(shown.bytesLeft, bytesLeft_, bytes, bytesText);
}

void LastValues::setTotalBytes(std::uint64_t bytes)
{
    write(shown.totalBytes, totalBytes_, bytes, bytesText);
}

} // namespace Schedules
