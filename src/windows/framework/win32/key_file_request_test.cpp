#include "windows/framework/win32/key_file_dialog.h"

#include "fakes/fake_platform.h"
#include "windows/framework/win32/active_window.h"
#include "windows/framework/win32/class_object.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <shobjidl.h>

// What the system's dialogs are asked for, with a recording one in place of the shell's.

namespace JobRunner
{

namespace
{

/// Writes down what it is told, and is cancelled by its user.
class RecordingFileDialog final : public IFileDialog
{
public:
    FILEOPENDIALOGOPTIONS options = 0;
    std::wstring extension;
    std::vector<std::wstring> types;
    HWND owner = nullptr;
    int shown = 0;

    HRESULT WINAPI QueryInterface(REFIID iid, void** object) override
    {
        *object = IsEqualIID(iid, IID_IFileDialog) ? this : nullptr;
        return *object ? S_OK : E_NOINTERFACE;
    }
    ULONG WINAPI AddRef() override { return 1; }
    ULONG WINAPI Release() override { return 1; }

    HRESULT WINAPI SetOptions(FILEOPENDIALOGOPTIONS given) override
    {
        options = given;
        return S_OK;
    }
    HRESULT WINAPI SetDefaultExtension(LPCWSTR given) override
    {
        extension = given;
        return S_OK;
    }
    HRESULT WINAPI SetFileTypes(UINT count, const COMDLG_FILTERSPEC* given) override
    {
        for (UINT i = 0; i < count; ++i)
            types.push_back(std::wstring(given[i].pszName) + L" is " + given[i].pszSpec);
        return S_OK;
    }
    HRESULT WINAPI Show(HWND given) override
    {
        ++shown;
        owner = given;
        return HRESULT_FROM_WIN32(ERROR_CANCELLED);
    }

    HRESULT WINAPI SetFileTypeIndex(UINT) override { return unasked(); }
    HRESULT WINAPI GetFileTypeIndex(UINT*) override { return unasked(); }
    HRESULT WINAPI Advise(IFileDialogEvents*, DWORD*) override { return unasked(); }
    HRESULT WINAPI Unadvise(DWORD) override { return unasked(); }
    HRESULT WINAPI GetOptions(FILEOPENDIALOGOPTIONS*) override { return unasked(); }
    HRESULT WINAPI SetDefaultFolder(IShellItem*) override { return unasked(); }
    HRESULT WINAPI SetFolder(IShellItem*) override { return unasked(); }
    HRESULT WINAPI GetFolder(IShellItem**) override { return unasked(); }
    HRESULT WINAPI GetCurrentSelection(IShellItem**) override { return unasked(); }
    HRESULT WINAPI SetFileName(LPCWSTR) override { return unasked(); }
    HRESULT WINAPI GetFileName(LPWSTR*) override { return unasked(); }
    HRESULT WINAPI SetTitle(LPCWSTR) override { return unasked(); }
    HRESULT WINAPI SetOkButtonLabel(LPCWSTR) override { return unasked(); }
    HRESULT WINAPI SetFileNameLabel(LPCWSTR) override { return unasked(); }
    HRESULT WINAPI GetResult(IShellItem**) override { return unasked(); }
    HRESULT WINAPI AddPlace(IShellItem*, FDAP) override { return unasked(); }
    HRESULT WINAPI Close(HRESULT) override { return unasked(); }
    HRESULT WINAPI SetClientGuid(REFGUID) override { return unasked(); }
    HRESULT WINAPI ClearClientData() override { return unasked(); }
    HRESULT WINAPI SetFilter(IShellItemFilter*) override { return unasked(); }

private:
    static HRESULT unasked()
    {
        ADD_FAILURE() << "nobody asks for this";
        return E_NOTIMPL;
    }
};

} // namespace

TEST(ShellKeyFileRequest, isForAnExistingFileOfTheTwoTypesAboveTheActiveWindow)
{
    Fakes::FakePlatform platform;
    platform.shell.systemVersion = {2, 6};
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    {
        RecordingFileDialog dialog;
        const ClassObject objects(CLSID_FileOpenDialog, dialog);
        ASSERT_TRUE(objects.isRegistered());
        const ActiveWindow owner;
        EXPECT_EQ(showKeyFileDialog(false), L"");
        EXPECT_EQ(dialog.shown, 1);
        EXPECT_EQ(dialog.owner, owner.window());
        EXPECT_EQ(dialog.options, static_cast<DWORD>(FOS_FORCEFILESYSTEM | FOS_PATHMUSTEXIST | FOS_FILEMUSTEXIST));
        EXPECT_EQ(dialog.extension, L"zelkey");
        EXPECT_EQ(dialog.types,
                  (std::vector<std::wstring>{L"Zel Key files (*.zelkey) is *.zelkey", L"All documents (*.*) is *.*"}));
    }
    CoUninitialize();
}

TEST(ClassicKeyFileRequest, isForAnExistingFileOfTheTwoTypes)
{
    wchar_t path[ClassicPathLength] = {};
    const OPENFILENAMEW request = classicKeyFileRequest(path);
    EXPECT_EQ(request.lStructSize, sizeof request);
    EXPECT_EQ(request.lpstrFile, path);
    EXPECT_EQ(request.nMaxFile, 260u);
    EXPECT_STREQ(request.lpstrDefExt, L"zelkey");
    EXPECT_EQ(request.Flags, static_cast<DWORD>(OFN_EXPLORER | OFN_ENABLESIZING | OFN_ENABLEHOOK | OFN_FILEMUSTEXIST |
                                                OFN_HIDEREADONLY));
    EXPECT_TRUE(request.lpfnHook);
    const std::wstring pairs(L"Zel Key files\0*.zelkey\0All Files\0*.*\0", 37);
    EXPECT_EQ(std::wstring(request.lpstrFilter, pairs.size() + 1), pairs + L'\0');
}

} // namespace JobRunner
