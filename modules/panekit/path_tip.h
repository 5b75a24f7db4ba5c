#pragma once

#include <string>

#include <windows.h>

namespace Panekit
{

/// The tooltip of a control whose text may be shortened. The system asks the control for the text each time.
class PathTip
{
public:
    PathTip() = default;
    ~PathTip();
    PathTip(const PathTip&) = delete;
    PathTip& operator=(const PathTip&) = delete;

    /// Once per control; the tip watches the mouse over all of `control`.
    void attach(HWND control);
    /// Answers `WM_NOTIFY` of the control: `text` is shown, an empty one shows nothing. True when it was ours.
    bool answer(LPARAM notification, const std::wstring& text);

private:
    HWND tip_ = nullptr;
    std::wstring shown_;
};

} // namespace Panekit
