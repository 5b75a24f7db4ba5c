// Runs a program, types the password where it asks for one, and tells how long it took and how long its engine:
//
//   answered_run.exe TIMES PASSWORD PROGRAM [ARGUMENT...]
//
// The milliseconds of the whole process and those of the engine go into the file TIMES. With an empty PASSWORD nothing
// is asked. Once it has answered it only waits, so that looking for windows costs the measured program nothing.

#include "windows/password_dialog.h"
#include "windows/running_program.h"

#include <cstdio>
#include <cwchar>
#include <fstream>
#include <stdexcept>

namespace
{

using namespace EndToEnd;
using Clock = std::chrono::steady_clock;

constexpr milliseconds Limit{600000};

void answer(const RunningProgram& program, const std::wstring& password)
{
    const PasswordDialog dialog = PasswordDialog::of(program);
    if (!dialog)
        throw std::runtime_error("no password was asked for");
    if (dialog.isForNewEncryption())
        dialog.typeNewPassword(password);
    else
        dialog.typePassword(password);
    dialog.click(PasswordDialog::Proceed);
}

void measure(int count, wchar_t** arguments)
{
    const std::filesystem::path times = arguments[1];
    const std::filesystem::path engineTime = times.wstring() + L".engine";
    const std::wstring password = arguments[2];
    std::filesystem::remove(engineTime);
    SetEnvironmentVariableW(L"JOBRUNNER_ENGINE_TIME", engineTime.c_str());
    std::wstring quotedArguments;
    for (int index = 4; index < count; ++index)
        quotedArguments += (index > 4 ? L" " : L"") + quoted(arguments[index]);

    const auto start = Clock::now();
    const RunningProgram program(arguments[3], quotedArguments);
    if (!password.empty())
        answer(program, password);
    if (program.exitCode(Limit) != 0)
        throw std::runtime_error("the program failed");
    const std::chrono::duration<double, std::milli> whole = Clock::now() - start;

    double nanoseconds = 0;
    std::ifstream(engineTime) >> nanoseconds;
    std::ofstream(times) << whole.count() << '\t' << nanoseconds / 1e6 << '\n';
    std::filesystem::remove(engineTime);
}

} // namespace

extern "C" int wmain(int count, wchar_t** arguments)
{
    try
    {
        if (count < 4)
            throw std::runtime_error("usage: answered_run.exe TIMES PASSWORD PROGRAM [ARGUMENT...]");
        measure(count, arguments);
        return 0;
    }
    catch (const std::exception& failure)
    {
        std::fprintf(stderr, "benchmark: %s\n", failure.what());
        return 1;
    }
}
