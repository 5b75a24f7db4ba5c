#pragma once

#include "common/measures.h"

#include <filesystem>

namespace Benchmarks
{

/// The first moments of one job, seen from outside.
struct MeasuredStart
{
    Clock::duration toQuestion; ///< from before the process is created until its question can be seen
    Clock::duration toWork;     ///< from the answer until the engine has removed the first file
};

/// Runs the program with a job that removes `firstFile` first, answers its question with yes as soon as it is seen, and
/// waits for its end. Throws when anything does not come.
MeasuredStart measureStart(const std::filesystem::path& program, const std::filesystem::path& job,
                           const std::filesystem::path& firstFile);

} // namespace Benchmarks
