#include "windows/progress/terminal/progress_screen.h"

#include <algorithm>

namespace JobRunner
{

namespace
{

constexpr unsigned BarWidth = 50;
constexpr unsigned MarqueeWidth = 8;
constexpr std::size_t ColumnWidth = 27;

template <class Value> void put(Value& shown, const std::optional<Value>& change)
{
    if (change)
        shown = *change;
}

std::wstring bar(int position)
{
    const auto filled = static_cast<unsigned>(std::clamp(position, 0, 100)) * BarWidth / 100;
    return L'[' + std::wstring(filled, L'#') + std::wstring(BarWidth - filled, L' ') + L']';
}

std::wstring movingBar(unsigned tick)
{
    std::wstring cells(BarWidth, L' ');
    for (unsigned cell = 0; cell < MarqueeWidth; ++cell)
        cells[(tick + cell) % BarWidth] = L'#';
    return L'[' + cells + L']';
}

std::wstring twoColumns(std::wstring left, const std::wstring& right)
{
    left.resize(std::max(left.size() + 1, ColumnWidth), L' ');
    return left + right;
}

} // namespace

void ProgressScreen::apply(const ProgressChanges& changes)
{
    put(title_, changes.title);
    put(file_, changes.fileText);
    put(filePosition_, changes.filePosition);
    put(total_, changes.totalText);
    put(totalPosition_, changes.totalPosition);
    put(marquee_, changes.marquee);
    put(elapsedTime_, changes.elapsedTime);
    put(timeLeft_, changes.timeLeft);
    put(speed_, changes.speed);
    put(elapsedBytes_, changes.elapsedBytes);
    put(bytesLeft_, changes.bytesLeft);
    put(totalBytes_, changes.totalBytes);
    put(visible_, changes.visible);
    put(paused_, changes.paused);
}

std::vector<std::wstring> ProgressScreen::lines(unsigned tick, bool withKeys) const
{
    std::vector<std::wstring> lines;
    if (!title_.empty())
        lines.push_back(title_);
    lines.push_back(file_);
    lines.push_back(bar(filePosition_));
    lines.push_back(total_);
    lines.push_back(marquee_ ? movingBar(tick) : bar(totalPosition_));
    lines.push_back(twoColumns(L"Elapsed Time: " + elapsedTime_, L"Elapsed Bytes: " + elapsedBytes_));
    lines.push_back(twoColumns(L"Time Left: " + timeLeft_, L"Bytes Left: " + bytesLeft_));
    lines.push_back(twoColumns(L"Speed: " + speed_, L"Total Bytes: " + totalBytes_));
    if (withKeys)
        lines.push_back(paused_ ? L"[p] Resume" : L"[c] Cancel  [p] Pause");
    return lines;
}

std::wstring ProgressScreen::summary() const
{
    const std::wstring title = title_.empty() ? title_ : title_ + L": ";
    return title + file_ + L", " + total_;
}

} // namespace JobRunner
