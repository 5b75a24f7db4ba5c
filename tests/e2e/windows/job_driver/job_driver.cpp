// Runs one job of JobRunner.exe without its user: answers Yes to the question, skips files with errors, and takes a
// picture of every window that shows up. Usage: job_driver.exe JOB.json [PASSWORD]; its exit code is the program's.
// Where a password is asked for, it gives PASSWORD, or cancels without one; what PASSWORD does not open is ignored.

#include <cstdio>
#include <cwchar>
#include <set>

#include "scenarios/sample_folder.h"
#include "windows/password_dialog.h"
#include "windows/running_program.h"
#include "windows/screenshot.h"

using namespace EndToEnd;

namespace
{

constexpr int SkipFile = 5;
constexpr int ProgressCancel = 1226;
constexpr const wchar_t* RepeatedRequest = L"Provide Key for ";

// Custom controls are painted a moment after their window shows up.
constexpr DWORD PaintTime = 300;

bool asksForPassword(const Window& window)
{
    const std::wstring header = PasswordDialog(window).header();
    return header.starts_with(L"Please enter password") || header.starts_with(RepeatedRequest);
}

void answerWithPassword(const PasswordDialog& dialog, const std::wstring& password)
{
    if (password.empty())
        return dialog.click(PasswordDialog::Cancel);
    if (dialog.header().starts_with(RepeatedRequest))
        return dialog.click(PasswordDialog::Ignore);
    if (dialog.isForNewEncryption())
        dialog.typeNewPassword(password);
    else
        dialog.typePassword(password);
    dialog.click(PasswordDialog::Proceed);
}

std::wstring nameOf(const Window& window)
{
    if (asksForPassword(window))
        return L"password";
    if (window.hasItem(SkipFile))
        return L"file-error";
    if (window.hasItem(ProgressCancel))
        return L"progress";
    return window.hasItem(IDYES) ? L"question" : L"message";
}

void answer(const Window& window, const std::wstring& password)
{
    if (asksForPassword(window))
        answerWithPassword(PasswordDialog(window), password);
    else if (window.hasItem(SkipFile))
        window.click(SkipFile);
    else if (window.hasItem(IDYES))
        window.click(IDYES);
    else if (!window.hasItem(ProgressCancel))
        window.click(window.hasItem(IDOK) ? IDOK : IDCANCEL);
}

/// Waits for a while until the title tells of a tenth of the job, so that the picture shows the bars at work.
void waitForBars(const Window& window)
{
    for (int round = 0; round < 200; ++round)
    {
        const std::wstring caption = window.caption();
        const std::size_t open = caption.find(L'(');
        if (open != std::wstring::npos && std::wcstol(caption.c_str() + open + 1, nullptr, 10) >= 10)
            return;
        Sleep(5);
    }
}

void meet(const Window& window, const std::wstring& password)
{
    const std::wstring name = nameOf(window);
    if (name == L"progress")
        waitForBars(window);
    else
        Sleep(PaintTime);
    std::wprintf(L"window \"%ls\" (%ls)\n", window.caption().c_str(), name.c_str());
    if (!takeScreenshot(window, name))
        std::wprintf(L"the picture of it cannot be written\n");
    answer(window, password);
}

} // namespace

extern "C" int wmain(int count, wchar_t** arguments)
{
    if (count != 2 && count != 3)
    {
        std::wprintf(L"Usage: job_driver.exe JOB.json [PASSWORD]\n");
        return 2;
    }
    const RunningProgram program(programUnderTest(), quoted(arguments[1]));
    std::set<HWND> met;
    while (program.isRunning())
    {
        for (const Window& window : program.visibleWindows())
        {
            if (!window.caption().empty() && met.insert(window.handle()).second)
                meet(window, count == 3 ? arguments[2] : L"");
        }
        Sleep(20);
    }
    return program.exitCode();
}
