#include "panekit/path_tip.h"

#include <commctrl.h>

namespace Panekit
{

namespace
{
constexpr int WidestTip = 600;
}

PathTip::~PathTip()
{
    if (tip_ && IsWindow(tip_))
        DestroyWindow(tip_);
}

void PathTip::attach(HWND control)
{
    if (tip_)
        return;
    INITCOMMONCONTROLSEX controls{sizeof controls, ICC_WIN95_CLASSES};
    InitCommonControlsEx(&controls);
    tip_ =
        CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT,
                        CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, control, nullptr, nullptr, nullptr);
    if (!tip_)
        return;
    TTTOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V1_SIZE; // what both versions of the common controls take
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = control;
    tool.uId = reinterpret_cast<UINT_PTR>(control);
    tool.lpszText = LPSTR_TEXTCALLBACKW;
    SendMessageW(tip_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    // A limit lets the tip break a long path into lines.
    SendMessageW(tip_, TTM_SETMAXTIPWIDTH, 0, WidestTip);
}

bool PathTip::answer(LPARAM notification, const std::wstring& text)
{
    auto* const header = reinterpret_cast<NMHDR*>(notification);
    if (!tip_ || header->hwndFrom != tip_ || header->code != static_cast<UINT>(TTN_GETDISPINFOW))
        return false;
    shown_ = text;
    reinterpret_cast<NMTTDISPINFOW*>(notification)->lpszText = shown_.data();
    return true;
}

} // namespace Panekit
