#include "platform/posix/crash_record.h"

#include <ucontext.h>

namespace Platform
{

namespace
{

constexpr std::uint32_t Misalignment = 0x80000002;
constexpr std::uint32_t Breakpoint = 0x80000003;
constexpr std::uint32_t SingleStep = 0x80000004;
constexpr std::uint32_t InPageError = 0xC0000006;
constexpr std::uint32_t IllegalInstruction = 0xC000001D;
constexpr std::uint32_t ArrayBoundsExceeded = 0xC000008C;
constexpr std::uint32_t FloatDivideByZero = 0xC000008E;
constexpr std::uint32_t FloatInexactResult = 0xC000008F;
constexpr std::uint32_t FloatInvalidOperation = 0xC0000090;
constexpr std::uint32_t FloatOverflow = 0xC0000091;
constexpr std::uint32_t FloatUnderflow = 0xC0000093;
constexpr std::uint32_t IntegerDivideByZero = 0xC0000094;
constexpr std::uint32_t IntegerOverflow = 0xC0000095;
constexpr std::uint32_t PrivilegedInstruction = 0xC0000096;

/// How far from the stack pointer a thread touches memory that is its stack's.
constexpr std::uintptr_t NearTheStack = 65536;

/// A stack that is used up is seen as a fault right at its end, where the stack pointer is.
bool isStackOverflow(std::uintptr_t address, std::uintptr_t stack)
{
    return (address < stack ? stack - address : address - stack) < NearTheStack;
}

std::uint32_t arithmeticCode(int reason)
{
    switch (reason)
    {
    case FPE_INTDIV:
        return IntegerDivideByZero;
    case FPE_INTOVF:
        return IntegerOverflow;
    case FPE_FLTDIV:
        return FloatDivideByZero;
    case FPE_FLTOVF:
        return FloatOverflow;
    case FPE_FLTUND:
        return FloatUnderflow;
    case FPE_FLTRES:
        return FloatInexactResult;
    case FPE_FLTSUB:
        return ArrayBoundsExceeded;
    default:
        return FloatInvalidOperation;
    }
}

std::uint32_t codeOf(int signal, const siginfo_t& information, const FaultPlace& place)
{
    const int reason = information.si_code;
    switch (signal)
    {
    case SIGBUS:
        return reason == BUS_ADRALN ? Misalignment : InPageError;
    case SIGILL:
        return reason == ILL_PRVOPC || reason == ILL_PRVREG ? PrivilegedInstruction : IllegalInstruction;
    case SIGFPE:
        return arithmeticCode(reason);
    case SIGTRAP:
        return reason == TRAP_TRACE ? SingleStep : Breakpoint;
    default:
        // Only a fault has an address; a signal that a process sent has something else in its place.
        return reason > 0 && isStackOverflow(reinterpret_cast<std::uintptr_t>(information.si_addr), place.stack)
                   ? ExceptionStackOverflow
                   : ExceptionAccessViolation;
    }
}

} // namespace

FaultPlace faultPlace(const void* context)
{
    const mcontext_t& machine = static_cast<const ucontext_t*>(context)->uc_mcontext;
#if defined(__aarch64__)
    return {machine.pc, machine.sp};
#else
    return {static_cast<std::uintptr_t>(machine.gregs[REG_RIP]), static_cast<std::uintptr_t>(machine.gregs[REG_RSP])};
#endif
}

ExceptionRecord crashRecord(int signal, const siginfo_t& information, const FaultPlace& place)
{
    return {codeOf(signal, information, place), place.instruction};
}

} // namespace Platform
