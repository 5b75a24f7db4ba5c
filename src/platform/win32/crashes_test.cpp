#include "platform/crashes.h"

#include "platform/testing_crashes.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <thread>

std::uint32_t runToEnding(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                          const std::filesystem::path&)
{
    std::wstring line = L'"' + program.wstring() + L'"';
    for (const std::string& argument : arguments)
        line += L" \"" + std::wstring(argument.begin(), argument.end()) + L'"';
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process))
        return 0;
    DWORD code = 0;
    if (WaitForSingleObject(process.hProcess, 30000) != WAIT_OBJECT_0)
        TerminateProcess(process.hProcess, 0);
    WaitForSingleObject(process.hProcess, INFINITE);
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return code;
}

/// The parent sees all of it.
std::uint32_t endingBy(std::uint32_t code)
{
    return code;
}

namespace
{

using Codes = std::vector<std::uint32_t>;

void expectReported(const std::string& way, std::uint32_t code)
{
    const CrashResult result = runCrashing(way);
    EXPECT_EQ(result.codes, Codes{code}) << way;
    EXPECT_EQ(result.ending, code) << way;
}

TEST(CrashesOnWindows, areReportedOnEveryKindOfThread)
{
    expectReported("null-write-on-system-thread", Platform::ExceptionAccessViolation);
}

TEST(CrashesOnWindows, areReportedInAWindowProcedure)
{
    expectReported("null-write-in-window", Platform::ExceptionAccessViolation);
    expectReported("exception-in-window", Platform::ExceptionOfTheLanguage);
}

TEST(CrashesOnWindows, areNotLostInAWindowProcedureThatTheSystemHasCalled)
{
    expectReported("null-write-in-sent-message", Platform::ExceptionAccessViolation);
    expectReported("exception-in-sent-message", Platform::ExceptionOfTheLanguage);
}

/// Intended: what a module handles by itself is no crash.
TEST(CrashesOnWindows, areNotTakenFromAModuleThatHandlesThem)
{
    constexpr std::uint32_t NoCrash = 3;
    const CrashResult result = runCrashing("module-handled");
    EXPECT_EQ(result.codes, Codes{});
    EXPECT_EQ(result.ending, NoCrash);
}

TEST(CrashesOnWindows, keepTheCodeOfAnExceptionThatAModuleRaised)
{
    expectReported("raised", 0xE0001234);
}

TEST(CrashesOnWindows, areReportedWhenAPlainThreadHasUsedUpItsStack)
{
    expectReported("stack-overflow-on-plain-thread", Platform::ExceptionStackOverflow);
}

/// Of this tool chain a function that is not there yet is a null pointer.
TEST(CrashesOnWindows, areReportedForACallOfAPureFunction)
{
    expectReported("pure-virtual", Platform::ExceptionAccessViolation);
}

TEST(CrashesOnWindows, findRoomOnEveryNewThread)
{
    ULONG room = 0;
    std::thread([&room] { SetThreadStackGuarantee(&room); }).join();
    EXPECT_EQ(room, 16u * 1024);
}

} // namespace
