#include "running_program.h"

#include <stdexcept>
#include <thread>

namespace EndToEnd
{
namespace
{

using Clock = std::chrono::steady_clock;

struct WindowSearch
{
    DWORD process;
    std::vector<Window> found;
};

BOOL CALLBACK collectWindow(HWND window, LPARAM search)
{
    auto& wanted = *reinterpret_cast<WindowSearch*>(search);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == wanted.process && IsWindowVisible(window) != FALSE)
        wanted.found.emplace_back(window);
    return TRUE;
}

} // namespace

bool waitUntil(const std::function<bool()>& condition, milliseconds limit)
{
    const auto end = Clock::now() + limit;
    for (;;)
    {
        if (condition())
            return true;
        if (Clock::now() >= end)
            return false;
        std::this_thread::sleep_for(milliseconds(10));
    }
}

std::wstring quoted(const std::filesystem::path& text)
{
    return L'"' + text.wstring() + L'"';
}

RunningProgram::RunningProgram(const std::filesystem::path& program, const std::wstring& arguments)
{
    std::wstring commandLine = quoted(program);
    if (!arguments.empty())
        commandLine += L' ' + arguments;
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    if (!CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &process_))
        throw std::runtime_error("the program does not start");
}

RunningProgram::~RunningProgram()
{
    if (isRunning())
    {
        TerminateProcess(process_.hProcess, 255);
        WaitForSingleObject(process_.hProcess, 5000);
    }
    CloseHandle(process_.hThread);
    CloseHandle(process_.hProcess);
}

bool RunningProgram::isRunning() const
{
    return WaitForSingleObject(process_.hProcess, 0) == WAIT_TIMEOUT;
}

int RunningProgram::exitCode(milliseconds limit) const
{
    if (WaitForSingleObject(process_.hProcess, static_cast<DWORD>(limit.count())) != WAIT_OBJECT_0)
        return -1;
    DWORD code = 0;
    GetExitCodeProcess(process_.hProcess, &code);
    return static_cast<int>(code);
}

std::vector<Window> RunningProgram::visibleWindows() const
{
    WindowSearch search{process_.dwProcessId, {}};
    EnumWindows(collectWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

Window RunningProgram::window(const std::wstring& caption, milliseconds limit) const
{
    return firstWindow([&caption](const std::wstring& text) { return text == caption; }, limit);
}

Window RunningProgram::windowLike(const std::wstring& beginning, milliseconds limit) const
{
    return firstWindow([&beginning](const std::wstring& text) { return text.starts_with(beginning); }, limit);
}

Window RunningProgram::firstWindow(const std::function<bool(const std::wstring&)>& fits, milliseconds limit) const
{
    Window result;
    waitUntil(
        [&]
        {
            const bool ended = !isRunning();
            for (const Window& candidate : visibleWindows())
            {
                if (fits(candidate.caption()))
                    result = candidate;
            }
            return result || ended;
        },
        limit);
    return result;
}

} // namespace EndToEnd
