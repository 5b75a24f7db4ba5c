#pragma once

#include "windows/progress/progress_display.h"

#include <string>

namespace Schedules
{

/// What stands on the display.
struct ShownProgress
{
    std::wstring file = L"First progress bar:";
    int fileBar = 0;
    bool marquee = false;
    std::wstring total = L"Second progress bar:";
    int totalBar = 0;
    std::wstring title = L"Progress Window";
    bool taskbarCounts = false;
    int taskbarValue = 0;
    std::wstring elapsedTime = L"n/a";
    std::wstring timeLeft = L"n/a";
    std::wstring speed = L"n/a";
    std::wstring elapsedBytes = L"n/a";
    std::wstring bytesLeft = L"n/a";
    std::wstring totalBytes = L"n/a";
    bool visible = false;
    bool paused = false;

    bool operator==(const ShownProgress&) const = default;

    /// As the thread of a dialog applies what has changed.
    void apply(const JobRunner::ProgressChanges& changes);
};

/// What the display has to show in the end: each value written at once, unless it is the last one of its item.
class LastValues
{
public:
    explicit LastValues(int operation) : operation_(operation) {}

    void setFileProgress(const std::wstring& name, double percent, bool wiping);
    void setTotalProgress(double percent, bool force);
    void setElapsedTime(int seconds);
    void setTimeLeft(int seconds);
    void setSpeed(std::uint64_t bytesPerSecond);
    void setElapsedBytes(std::uint64_t bytes);
    void setBytesLeft(std::uint64_t bytes);
    void setTotalBytes(std::uint64_t bytes);

    ShownProgress shown;

private:
    const int operation_;
    std::wstring name_;
    double filePercent_ = 0;
    double totalPercent_ = 0;
    int elapsedTime_ = 0;
    std::uint64_t speed_ = 0;
    std::uint64_t elapsedBytes_ = 0;
    std::uint64_t bytesLeft_ = 0;
    std::uint64_t totalBytes_ = 0;
};

} // namespace Schedules
