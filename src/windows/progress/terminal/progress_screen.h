#pragma once

#include "windows/progress/progress_display.h"

#include <string>
#include <vector>

namespace JobRunner
{

/// The progress display as lines of text, with the same texts as the dialog. One thread only.
class ProgressScreen
{
public:
    void apply(const ProgressChanges& changes);

    bool visible() const { return visible_; }
    bool paused() const { return paused_; }
    /// All of the display. `tick` moves the bar that stands for an unknown total.
    std::vector<std::wstring> lines(unsigned tick, bool withKeys) const;
    /// The same in short, for an output that cannot redraw.
    std::wstring summary() const;

private:
    std::wstring title_ = L"Progress Window";
    std::wstring file_ = L"First progress bar:";
    int filePosition_ = 0;
    std::wstring total_ = L"Second progress bar:";
    int totalPosition_ = 0;
    bool marquee_ = false;
    std::wstring elapsedTime_ = L"n/a";
    std::wstring timeLeft_ = L"n/a";
    std::wstring speed_ = L"n/a";
    std::wstring elapsedBytes_ = L"n/a";
    std::wstring bytesLeft_ = L"n/a";
    std::wstring totalBytes_ = L"n/a";
    bool visible_ = false;
    bool paused_ = false;
};

} // namespace JobRunner
