#include "windows/framework/win32/help_topic.h"

namespace JobRunner
{

namespace
{
constexpr UINT DisplayTopic = 0;
using HtmlHelpFunction = HWND(WINAPI*)(HWND owner, const wchar_t* file, UINT command, DWORD_PTR data);
} // namespace

void showHelpTopic(HWND owner, const wchar_t* topic)
{
    // Found in the system's own folder only, and stays loaded while the help viewer may be open.
    const HMODULE viewer = LoadLibraryExW(L"hhctrl.ocx", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (!viewer)
        return;
    const auto show = reinterpret_cast<HtmlHelpFunction>(reinterpret_cast<void*>(GetProcAddress(viewer, "HtmlHelpW")));
    if (show)
        show(owner, helpRequest(topic).c_str(), DisplayTopic, 0);
}

std::wstring helpRequest(const wchar_t* topic)
{
    return std::wstring(L"::/") + topic;
}

} // namespace JobRunner
