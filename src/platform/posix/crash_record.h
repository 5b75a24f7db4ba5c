#pragma once

#include "platform/crashes.h"

#include <signal.h>

namespace Platform
{

/// Where the processor was when a signal stopped it.
struct FaultPlace
{
    std::uintptr_t instruction = 0;
    std::uintptr_t stack = 0; ///< the stack pointer
};

/// From the third argument of a signal handler. Safe in one.
FaultPlace faultPlace(const void* context);

/// The exception that stands for the fault on every system. Safe in a signal handler.
ExceptionRecord crashRecord(int signal, const siginfo_t& information, const FaultPlace& place);

} // namespace Platform
