#include "panekit/balloon_tip.h"

#include <string>

#include <commctrl.h>

namespace Panekit
{

namespace
{

constexpr UINT_PTR SubclassId = 1;
constexpr std::size_t LongestTitle = 99;
constexpr WPARAM WarningIcon = 2;

TTTOOLINFOW toolOf(HWND control)
{
    TTTOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V1_SIZE; // what both versions of the common controls take
    tool.uFlags = TTF_TRACK;
    tool.hwnd = control;
    return tool;
}

LPARAM asParameter(const void* pointer)
{
    return reinterpret_cast<LPARAM>(pointer);
}

} // namespace

BalloonTip::~BalloonTip()
{
    if (tip_ && IsWindow(tip_))
        DestroyWindow(tip_);
}

bool BalloonTip::open(HWND control)
{
    if (tip_ && IsWindow(tip_))
        return true;
    INITCOMMONCONTROLSEX controls{sizeof controls, ICC_WIN95_CLASSES};
    InitCommonControlsEx(&controls);
    control_ = control;
    tip_ =
        CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_BALLOON | TTS_ALWAYSTIP | TTS_NOPREFIX,
                        CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, control, nullptr, nullptr, nullptr);
    if (!tip_)
        return false;
    wchar_t none[] = L"";
    TTTOOLINFOW tool = toolOf(control);
    tool.lpszText = none;
    SendMessageW(tip_, TTM_ADDTOOLW, 0, asParameter(&tool));
    SetWindowSubclass(tip_, procedure, SubclassId, reinterpret_cast<DWORD_PTR>(this));
    return true;
}

void BalloonTip::show(HWND control, POINT at, const wchar_t* title, const wchar_t* text, int widest)
{
    if (!open(control))
        return;
    hide();
    std::wstring shown = text ? text : L"";
    const std::wstring head = std::wstring(title ? title : L"").substr(0, LongestTitle);
    TTTOOLINFOW tool = toolOf(control);
    tool.lpszText = shown.data();
    SendMessageW(tip_, TTM_SETMAXTIPWIDTH, 0, widest);
    SendMessageW(tip_, TTM_SETTITLEW, WarningIcon, asParameter(head.c_str()));
    SendMessageW(tip_, TTM_UPDATETIPTEXTW, 0, asParameter(&tool));
    SendMessageW(tip_, TTM_TRACKPOSITION, 0, MAKELPARAM(at.x, at.y));
    SendMessageW(tip_, TTM_TRACKACTIVATE, TRUE, asParameter(&tool));
}

void BalloonTip::hide()
{
    if (!tip_ || !IsWindow(tip_))
        return;
    TTTOOLINFOW tool = toolOf(control_);
    SendMessageW(tip_, TTM_TRACKACTIVATE, FALSE, asParameter(&tool));
}

bool BalloonTip::isShown() const
{
    return tip_ && IsWindowVisible(tip_);
}

LRESULT CALLBACK BalloonTip::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                       DWORD_PTR self)
{
    if (message == WM_NCDESTROY)
        RemoveWindowSubclass(window, procedure, SubclassId);
    if (message == WM_LBUTTONDOWN)
    {
        reinterpret_cast<BalloonTip*>(self)->hide();
        return 0;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

} // namespace Panekit
