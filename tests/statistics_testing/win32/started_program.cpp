#include "statistics_testing/started_program.h"

#include <windows.h>

#include <stdexcept>

namespace StatisticsTesting
{

struct StartedProgram::Process
{
    PROCESS_INFORMATION started = {};

    Process() = default;
    ~Process()
    {
        WaitForSingleObject(started.hProcess, INFINITE);
        CloseHandle(started.hThread);
        CloseHandle(started.hProcess);
    }
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;
};

StartedProgram::StartedProgram(const std::filesystem::path& program, const std::vector<std::string>& arguments)
{
    std::wstring line = L'"' + program.wstring() + L'"';
    for (const std::string& argument : arguments)
        line += L' ' + std::wstring(argument.begin(), argument.end());
    STARTUPINFOW settings = {};
    settings.cb = sizeof(settings);
    PROCESS_INFORMATION started = {};
    if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &settings,
                        &started))
        throw std::runtime_error("the program does not start");
    process_ = std::make_unique<Process>();
    process_->started = started;
}

StartedProgram::~StartedProgram() = default;
StartedProgram::StartedProgram(StartedProgram&&) noexcept = default;

int StartedProgram::exitCode()
{
    DWORD code = 0;
    WaitForSingleObject(process_->started.hProcess, INFINITE);
    return GetExitCodeProcess(process_->started.hProcess, &code) ? static_cast<int>(code) : -1;
}

void StartedProgram::kill()
{
    TerminateProcess(process_->started.hProcess, static_cast<UINT>(-1));
}

} // namespace StatisticsTesting
