#pragma once

#include "interfaces/panekit/controls.h"
#include "windows/file_error/i_file_error_window_view.h"
#include "windows/framework/win32/background.h"

#include <string>
#include <vector>

#include <windows.h>

namespace JobRunner
{

/// The dialog of template 303 with its custom controls. See `IFileErrorWindowView`.
class FileErrorWindowView final : public IFileErrorWindowView
{
public:
    void setTitle(const wchar_t* text) override;
    void setHeader(const wchar_t* text) override;
    void setSource(const wchar_t* path) override;
    void setTarget(const wchar_t* path) override;
    void setMessage(const wchar_t* text) override;
    int doModal() override;

private:
    static INT_PTR CALLBACK procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
    INT_PTR onMessage(UINT message, WPARAM wParam);
    void onInit();
    void onErase(HDC dc);
    void onDestroy();
    void makeControls();
    void makeHeader();
    ISimpleText* makeText(const wchar_t* text);
    ISimpleText* makeCaption(const wchar_t* text);
    ISimpleText* makePath(const std::wstring& path);
    void layOut();

    std::wstring title_ = L"File Error Occured";
    std::wstring headerText_ = L"Please choose what to do with file.";
    std::wstring sourcePath_;
    std::wstring targetPath_;
    std::wstring message_ = L"Unknown error occured";

    HWND dialog_ = nullptr;
    DialogBackground background_;
    /// Every control that exists, in the order of their making; the pointers below are among them.
    std::vector<ICustomControl*> controls_;
    ICopyDialogGradient* header_ = nullptr;
    ISimpleText* sourceCaption_ = nullptr;
    ISimpleText* source_ = nullptr;
    ISimpleText* targetCaption_ = nullptr;
    ISimpleText* target_ = nullptr;
    ISimpleText* text_ = nullptr;
};

} // namespace JobRunner
