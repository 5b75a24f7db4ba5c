#pragma once

#include <cstdint>

namespace Platform
{

/// `EXCEPTION_RECORD`, as far as it is reported.
struct ExceptionRecord
{
    std::uint32_t code = 0;
    std::uintptr_t address = 0; ///< of the instruction
};

// Codes of exceptions that the system raises; the names of all are in telemetry/exception_names.h.
inline constexpr std::uint32_t ExceptionAccessViolation = 0xC0000005;
inline constexpr std::uint32_t ExceptionStackOverflow = 0xC00000FD;
/// An exception of the language that nobody catches.
inline constexpr std::uint32_t ExceptionOfTheLanguage = 0xE06D7363;

/// What an exception filter answers so that the process ends with the exception's code.
inline constexpr std::int32_t ExecuteHandler = 1; ///< `EXCEPTION_EXECUTE_HANDLER`

/// Reports an exception that nobody handles, while the other threads run on. Windows calls it on the thread that
/// crashed; on Linux that thread may take neither memory nor a lock, so it waits, and another one runs the filter.
using CrashFilter = std::int32_t (*)(const ExceptionRecord& record);

/// What becomes of exceptions that nobody handles: the filter reports the first one, then the process ends by it, on
/// Windows with the exception's code, on Linux by its signal. A thread that crashes meanwhile waits for that end. A
/// filter that crashes itself ends the process at once. Stack overflows are reported on every thread of Windows, on
/// Linux on the first one and those of `Threads`.
class Crashes
{
public:
    virtual ~Crashes() = default;
    /// `SetUnhandledExceptionFilter`, and what the system lacks so that faults of the processor and exceptions of the
    /// language reach the filter from every thread. Install it once, on the first thread, before others are started;
    /// it stays for as long as the process lives. Not null.
    virtual void setUnhandledExceptionFilter(CrashFilter filter) = 0;
};

} // namespace Platform
