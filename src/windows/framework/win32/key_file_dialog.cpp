#include "windows/framework/win32/key_file_dialog.h"

#include "systemutilities/shell_utilities.h"

#include <memory>

#include <shobjidl.h>

namespace JobRunner
{

namespace
{

constexpr const wchar_t* Extension = L"zelkey";
constexpr COMDLG_FILTERSPEC FileTypes[] = {{L"Zel Key files (*.zelkey)", L"*.zelkey"},
                                           {L"All documents (*.*)", L"*.*"}};
constexpr wchar_t ClassicFilter[] = L"Zel Key files\0*.zelkey\0All Files\0*.*\0";

struct ReleaseCom
{
    void operator()(IUnknown* object) const { object->Release(); }
};
template <class Interface> using ComPtr = std::unique_ptr<Interface, ReleaseCom>;

bool prepareShellDialog(IFileDialog& dialog)
{
    return SUCCEEDED(dialog.SetOptions(FOS_FORCEFILESYSTEM | FOS_PATHMUSTEXIST | FOS_FILEMUSTEXIST)) &&
           SUCCEEDED(dialog.SetDefaultExtension(Extension)) &&
           SUCCEEDED(dialog.SetFileTypes(ARRAYSIZE(FileTypes), FileTypes));
}

std::wstring pathOf(IShellItem& item)
{
    wchar_t* text = nullptr;
    if (FAILED(item.GetDisplayName(SIGDN_FILESYSPATH, &text)))
        return {};
    std::wstring path = text;
    CoTaskMemFree(text);
    return path;
}

std::wstring showShellDialog()
{
    void* made = nullptr;
    if (FAILED(CoCreateInstance(CLSID_FileOpenDialog, nullptr, CLSCTX_INPROC_SERVER, IID_IFileDialog, &made)))
        return {};
    const ComPtr<IFileDialog> dialog(static_cast<IFileDialog*>(made));
    if (!prepareShellDialog(*dialog) || FAILED(dialog->Show(GetActiveWindow())))
        return {};
    IShellItem* result = nullptr;
    if (FAILED(dialog->GetResult(&result)))
        return {};
    const ComPtr<IShellItem> item(result);
    return pathOf(*item);
}

/// The dialog's own look has to go through a hook to stay as it was; this one lets everything pass.
UINT_PTR CALLBACK passEverything(HWND, UINT, WPARAM, LPARAM)
{
    return 0;
}

std::wstring showClassicDialog()
{
    wchar_t path[ClassicPathLength] = {};
    OPENFILENAMEW request = classicKeyFileRequest(path);
    return GetOpenFileNameW(&request) ? path : std::wstring();
}

} // namespace

OPENFILENAMEW classicKeyFileRequest(wchar_t (&path)[ClassicPathLength])
{
    OPENFILENAMEW request{};
    request.lStructSize = sizeof(request);
    request.lpstrFilter = ClassicFilter;
    request.lpstrFile = path;
    request.nMaxFile = ClassicPathLength;
    request.lpstrDefExt = Extension;
    request.Flags = OFN_EXPLORER | OFN_ENABLESIZING | OFN_ENABLEHOOK | OFN_FILEMUSTEXIST | OFN_HIDEREADONLY;
    request.lpfnHook = passEverything;
    return request;
}

std::wstring showKeyFileDialog(bool initializeCom)
{
    if (initializeCom)
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const bool shell = Halden::SystemUtilities::isVistaOrLater();
    std::wstring path = shell ? showShellDialog() : showClassicDialog();
    // Kept: a shell dialog that was cancelled leaves COM to the end of its thread.
    if (initializeCom && !(shell && path.empty()))
        CoUninitialize();
    return path;
}

} // namespace JobRunner
