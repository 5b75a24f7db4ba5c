#pragma once

#include "vaultcore/win32/win32_files.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <windows.h>

// For tests: a package at work.

namespace VaultCore
{

/// A program of ours that was started; it ends with this object.
class RunningPackage
{
public:
    /// `input` is what it finds on its standard input.
    RunningPackage(const std::filesystem::path& program, const std::wstring& arguments, const std::string& input = "")
    {
        SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
        HANDLE readEnd = nullptr;
        HANDLE writeEnd = nullptr;
        checked(CreatePipe(&readEnd, &writeEnd, &inherited, 0));
        const FileHandle reading(readEnd);
        const FileHandle writing(writeEnd);
        SetHandleInformation(writeEnd, HANDLE_FLAG_INHERIT, 0);
        STARTUPINFOW start = {};
        start.cb = sizeof start;
        start.dwFlags = STARTF_USESTDHANDLES;
        start.hStdInput = readEnd;
        std::wstring line = L"\"" + program.wstring() + L"\" " + arguments;
        checked(CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                               &process_));
        DWORD written = 0;
        WriteFile(writeEnd, input.data(), static_cast<DWORD>(input.size()), &written, nullptr);
    }

    ~RunningPackage()
    {
        TerminateProcess(process_.hProcess, 99);
        CloseHandle(process_.hThread);
        CloseHandle(process_.hProcess);
    }
    RunningPackage(const RunningPackage&) = delete;
    RunningPackage& operator=(const RunningPackage&) = delete;

    DWORD exitCode()
    {
        EXPECT_EQ(WaitForSingleObject(process_.hProcess, Patience), WAIT_OBJECT_0);
        DWORD code = 0;
        GetExitCodeProcess(process_.hProcess, &code);
        return code;
    }

    /// The program's visible dialog other than `known`; null when none comes.
    HWND dialogBeside(HWND known) const
    {
        for (DWORD waited = 0; waited < Patience; waited += Step)
        {
            Search search{process_.dwProcessId, known, nullptr};
            EnumWindows(look, reinterpret_cast<LPARAM>(&search));
            if (search.found != nullptr)
                return search.found;
            Sleep(Step);
        }
        return nullptr;
    }

    /// Waits until the condition holds.
    template <class Condition> static bool comes(Condition condition)
    {
        for (DWORD waited = 0; waited < Patience; waited += Step)
        {
            if (condition())
                return true;
            Sleep(Step);
        }
        return false;
    }

    static void press(HWND window, int control)
    {
        PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(control),
                     reinterpret_cast<LPARAM>(GetDlgItem(window, control)));
    }

private:
    static constexpr DWORD Patience = 60'000;
    static constexpr DWORD Step = 20;

    struct Search
    {
        DWORD process;
        HWND known;
        HWND found;
    };

    static BOOL CALLBACK look(HWND window, LPARAM parameter)
    {
        auto& search = *reinterpret_cast<Search*>(parameter);
        DWORD process = 0;
        wchar_t name[16] = {};
        GetWindowThreadProcessId(window, &process);
        GetClassNameW(window, name, static_cast<int>(std::size(name)));
        if (process != search.process || window == search.known || !IsWindowVisible(window) ||
            std::wstring_view(name) != L"#32770")
            return TRUE;
        search.found = window;
        return FALSE;
    }

    PROCESS_INFORMATION process_ = {};
};

} // namespace VaultCore
