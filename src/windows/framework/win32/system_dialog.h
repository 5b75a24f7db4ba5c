#pragma once

// For the tests of the system's own dialogs.

#include <string>
#include <vector>

#include <windows.h>

namespace JobRunner
{

/// An open dialog of another thread of this process.
class SystemDialog
{
public:
    static constexpr int ReadOnlyBox = 1040;

    /// Null until it can be used.
    HWND window = nullptr;
    HWND name = nullptr;

    static SystemDialog find()
    {
        SystemDialog found;
        EnumWindows(visit, reinterpret_cast<LPARAM>(&found));
        return found;
    }

    bool isUp() const { return window && name; }
    HWND item(int id) const { return GetDlgItem(window, id); }
    void press(int button) const { PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(button), 0); }
    void type(const std::wstring& text) const
    {
        SendMessageW(name, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
    }
    std::vector<std::wstring> fileTypes() const
    {
        const HWND types = item(FileTypes);
        std::vector<std::wstring> texts;
        for (LRESULT i = 0; i < SendMessageW(types, CB_GETCOUNT, 0, 0); ++i)
        {
            wchar_t text[100] = {};
            SendMessageW(types, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
            texts.emplace_back(text);
        }
        return texts;
    }

private:
    static constexpr int FileTypes = 1136;
    static constexpr int NameField = 1148;
    static constexpr int NameFieldOfWine = 1152;

    static std::wstring className(HWND window)
    {
        wchar_t name[40] = {};
        GetClassNameW(window, name, 40);
        return name;
    }

    static BOOL CALLBACK visit(HWND window, LPARAM found)
    {
        DWORD process = 0;
        const DWORD thread = GetWindowThreadProcessId(window, &process);
        const bool ours = process == GetCurrentProcessId() && thread != GetCurrentThreadId();
        if (!ours || !IsWindowVisible(window) || className(window) != L"#32770")
            return TRUE;
        auto& dialog = *reinterpret_cast<SystemDialog*>(found);
        dialog.window = window;
        EnumChildWindows(window, visitItem, found);
        return !dialog.isUp(); // a message above the dialog has no name
    }

    static BOOL CALLBACK visitItem(HWND item, LPARAM found)
    {
        const int id = GetDlgCtrlID(item);
        if (className(item) == L"Edit" && (id == NameField || id == NameFieldOfWine))
            reinterpret_cast<SystemDialog*>(found)->name = item;
        return TRUE;
    }
};

} // namespace JobRunner
