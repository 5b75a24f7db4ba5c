// Runs one job of JobRunner.exe without its user: answers Yes to the question, skips files with errors, and takes a
// picture of every window that shows up. Usage: job_driver.exe JOB.json; its exit code is the program's.

#include <cstdio>
#include <cwchar>
#include <set>

#include "scenarios/sample_folder.h"
#include "windows/running_program.h"
#include "windows/screenshot.h"

using namespace EndToEnd;

namespace
{

constexpr int SkipFile = 5;
constexpr int ProgressCancel = 1226;

// Custom controls are painted a moment after their window shows up.
constexpr DWORD PaintTime = 300;

std::wstring nameOf(const Window& window)
{
    if (window.hasItem(SkipFile))
        return L"file-error";
    if (window.hasItem(ProgressCancel))
        return L"progress";
    return window.hasItem(IDYES) ? L"question" : L"message";
}

void answer(const Window& window)
{
    if (window.hasItem(SkipFile))
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

void meet(const Window& window)
{
    const std::wstring name = nameOf(window);
    if (name == L"progress")
        waitForBars(window);
    else
        Sleep(PaintTime);
    std::wprintf(L"window \"%ls\" (%ls)\n", window.caption().c_str(), name.c_str());
    if (!takeScreenshot(window, name))
        std::wprintf(L"the picture of it cannot be written\n");
    answer(window);
}

} // namespace

extern "C" int wmain(int count, wchar_t** arguments)
{
    if (count != 2)
    {
        std::wprintf(L"Usage: job_driver.exe JOB.json\n");
        return 2;
    }
    const RunningProgram program(programUnderTest(), quoted(arguments[1]));
    std::set<HWND> met;
    while (program.isRunning())
    {
        for (const Window& window : program.visibleWindows())
        {
            if (!window.caption().empty() && met.insert(window.handle()).second)
                meet(window);
        }
        Sleep(20);
    }
    return program.exitCode();
}
