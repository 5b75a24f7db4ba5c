#include "sfxstub/choosers.h"

#include "sfxstub/system_libraries.h"

#include <commdlg.h>
#include <objbase.h>
#include <shlobj.h>

// The libraries of these dialogs are loaded when they are needed: those that the program names itself would be looked
// for, with all that they need, in the program's folder first.

namespace SfxStub
{

std::wstring chooseFile(HWND owner)
{
    const auto choose = systemFunction<decltype(GetOpenFileNameW)>(L"comdlg32.dll", "GetOpenFileNameW");
    if (choose == nullptr)
        return {};
    std::wstring path(32768, L'\0');
    OPENFILENAMEW order = {};
    order.lStructSize = sizeof order;
    order.hwndOwner = owner;
    order.lpstrFile = path.data();
    order.nMaxFile = static_cast<DWORD>(path.size());
    order.lpstrTitle = L"Key file";
    order.Flags = OFN_FILEMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_DONTADDTORECENT;
    return choose(&order) ? std::wstring(path.c_str()) : std::wstring();
}

std::wstring chooseFolder(HWND owner)
{
    const auto browse = systemFunction<decltype(SHBrowseForFolderW)>(L"shell32.dll", "SHBrowseForFolderW");
    const auto pathOf = systemFunction<decltype(SHGetPathFromIDListW)>(L"shell32.dll", "SHGetPathFromIDListW");
    const auto start = systemFunction<decltype(CoInitializeEx)>(L"ole32.dll", "CoInitializeEx");
    const auto end = systemFunction<decltype(CoUninitialize)>(L"ole32.dll", "CoUninitialize");
    const auto release = systemFunction<decltype(CoTaskMemFree)>(L"ole32.dll", "CoTaskMemFree");
    if (browse == nullptr || pathOf == nullptr || start == nullptr || end == nullptr || release == nullptr)
        return {};
    if (FAILED(start(nullptr, COINIT_APARTMENTTHREADED)))
        return {};
    BROWSEINFOW order = {};
    order.hwndOwner = owner;
    order.lpszTitle = L"Folder for the files";
    order.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE;
    wchar_t path[MAX_PATH] = {};
    auto* const chosen = browse(&order);
    const bool isPath = chosen != nullptr && pathOf(chosen, path);
    release(chosen);
    end();
    return isPath ? path : L"";
}

} // namespace SfxStub
