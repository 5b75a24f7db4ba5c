#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace Platform
{

/// What a new process gets besides its arguments.
struct StartSettings
{
    std::string folder;   ///< to work in; empty for that of this process
    int output = -1;      ///< its standard output; -1 for that of this process
    bool isQuiet = false; ///< it gets no input, and what it says of its errors is dropped
};

/// Starts the program at the full path `program` as a child of this process, with these arguments, the first of which
/// is its name. It gets no descriptors besides the standard ones, and no signal is blocked or ignored. Its id, or -1.
pid_t startProgram(const std::string& program, const std::vector<std::string>& arguments,
                   const StartSettings& settings = {});

/// What a program writes to its output until it ends; empty when it cannot be started. Waits for its end.
std::string outputOf(const std::string& program, const std::vector<std::string>& arguments);

/// Full path of a program that is found as the shell finds it: a path is taken as it is, a name is looked for in PATH.
/// Empty when there is none.
std::string findProgram(const std::string& name);

} // namespace Platform
