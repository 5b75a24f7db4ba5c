#pragma once

#include <optional>
#include <string>

namespace SfxStub
{

/// What the command line asks for.
struct QuietOrder
{
    std::wstring folder;
    /// Empty: the password comes from standard input.
    std::wstring keyFile;
};

/// Exit codes of a run without a window.
inline constexpr int ExitComplete = 0;
inline constexpr int ExitFailed = 1;
inline constexpr int ExitWrongKey = 2;
inline constexpr int ExitBadArguments = 3;

/// Unpacks without a window. The password is the first line of standard input (UTF-8): on a command line every program
/// could read it. Nothing that exists is replaced, and a file that fails is left out. Tells on standard error.
int runQuietly(const QuietOrder& order);

} // namespace SfxStub
