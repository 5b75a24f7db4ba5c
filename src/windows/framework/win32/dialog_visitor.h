#pragma once

// For the tests of dialogs: the real control module, and a visitor of an open dialog.

#include "interfaces/panekit/controls.h"
#include "windows/framework/view_factory.h"

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <windows.h>

namespace JobRunner
{

/// The real control module, from the folder of the built program; it stays loaded until the process ends.
class RealControls
{
public:
    static bool areLoaded()
    {
        static const bool loaded = load();
        return loaded;
    }

private:
    static bool load()
    {
        wchar_t own[MAX_PATH] = {};
        GetModuleFileNameW(nullptr, own, MAX_PATH);
        std::wstring folder = own;
        folder = folder.substr(0, folder.find_last_of(L'\\') + 1) + L"..\\bin\\";
        const HMODULE module = LoadLibraryExW((folder + L"panekit.dll").c_str(), nullptr, 0);
        if (!module)
            return false;
        const auto initialize =
            reinterpret_cast<PanekitInitializeFunction>(reinterpret_cast<void*>(GetProcAddress(module, "initialize")));
        setControlModule(module);
        return initialize && initialize(folder.c_str()) != 0;
    }
};

/// Waits with a timer of this thread, which the dialog's own loop serves, until the dialog can be seen. During a visit
/// another visitor may wait for a further dialog above the first.
class DialogVisitor
{
public:
    explicit DialogVisitor(std::function<void(HWND)> visit) : visit_(std::move(visit)), outer_(current)
    {
        EnumThreadWindows(GetCurrentThreadId(), addDialog, reinterpret_cast<LPARAM>(&known_));
        current = this;
        timer_ = SetTimer(nullptr, 0, Interval, onTimer);
    }
    ~DialogVisitor()
    {
        KillTimer(nullptr, timer_);
        current = outer_;
    }
    DialogVisitor(const DialogVisitor&) = delete;
    DialogVisitor& operator=(const DialogVisitor&) = delete;

private:
    static constexpr UINT Interval = 10;
    static inline DialogVisitor* current = nullptr;

    static BOOL CALLBACK addDialog(HWND window, LPARAM dialogs)
    {
        constexpr const wchar_t* DialogClass = L"#32770";
        wchar_t name[20] = {};
        GetClassNameW(window, name, 20);
        if (std::wstring(name) == DialogClass && IsWindowVisible(window))
            reinterpret_cast<std::vector<HWND>*>(dialogs)->push_back(window);
        return TRUE;
    }

    HWND newDialog() const
    {
        std::vector<HWND> dialogs;
        EnumThreadWindows(GetCurrentThreadId(), addDialog, reinterpret_cast<LPARAM>(&dialogs));
        std::erase_if(dialogs, [this](HWND dialog) { return std::ranges::find(known_, dialog) != known_.end(); });
        return dialogs.empty() ? nullptr : dialogs.front();
    }

    static void CALLBACK onTimer(HWND, UINT, UINT_PTR, DWORD)
    {
        if (!current || !current->visit_)
            return;
        const HWND dialog = current->newDialog();
        if (!dialog)
            return;
        const std::function<void(HWND)> visit = std::move(current->visit_);
        current->visit_ = nullptr;
        UpdateWindow(dialog);
        visit(dialog);
    }

    std::function<void(HWND)> visit_;
    DialogVisitor* const outer_;
    std::vector<HWND> known_;
    UINT_PTR timer_ = 0;
};

} // namespace JobRunner
