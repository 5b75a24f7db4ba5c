#include "platform/posix/crash_record.h"

#include <gtest/gtest.h>

using namespace Platform;

namespace
{

constexpr FaultPlace Place{0x401000, 0x7fff00001000};

std::uint32_t codeOf(int signal, int reason, std::uintptr_t address = 0)
{
    siginfo_t information{};
    information.si_signo = signal;
    information.si_code = reason;
    information.si_addr = reinterpret_cast<void*>(address);
    return crashRecord(signal, information, Place).code;
}

} // namespace

TEST(CrashRecord, hasTheAddressOfTheInstruction)
{
    EXPECT_EQ(crashRecord(SIGSEGV, siginfo_t{}, Place).address, 0x401000u);
}

TEST(CrashRecord, ofMemoryIsAnAccessViolation)
{
    EXPECT_EQ(codeOf(SIGSEGV, SEGV_MAPERR), 0xC0000005u);
    EXPECT_EQ(codeOf(SIGSEGV, SEGV_ACCERR, 0x10), 0xC0000005u);
}

TEST(CrashRecord, ofMemoryAtTheStackPointerIsAStackOverflow)
{
    constexpr std::uintptr_t Near = 64 * 1024;
    EXPECT_EQ(codeOf(SIGSEGV, SEGV_MAPERR, Place.stack), 0xC00000FDu);
    EXPECT_EQ(codeOf(SIGSEGV, SEGV_ACCERR, Place.stack - Near + 1), 0xC00000FDu);
    EXPECT_EQ(codeOf(SIGSEGV, SEGV_ACCERR, Place.stack + Near - 1), 0xC00000FDu);
    EXPECT_EQ(codeOf(SIGSEGV, SEGV_ACCERR, Place.stack - Near), 0xC0000005u);
    EXPECT_EQ(codeOf(SIGSEGV, SEGV_ACCERR, Place.stack + Near), 0xC0000005u);
}

TEST(CrashRecord, ofASignalThatWasSentIsAnAccessViolation)
{
    EXPECT_EQ(codeOf(SIGSEGV, SI_USER, Place.stack), 0xC0000005u);
    EXPECT_EQ(codeOf(SIGSEGV, SI_TKILL, Place.stack), 0xC0000005u);
}

TEST(CrashRecord, ofTheBusIsAMisalignmentOrAnErrorOfAPage)
{
    EXPECT_EQ(codeOf(SIGBUS, BUS_ADRALN), 0x80000002u);
    EXPECT_EQ(codeOf(SIGBUS, BUS_ADRERR), 0xC0000006u);
    EXPECT_EQ(codeOf(SIGBUS, BUS_OBJERR), 0xC0000006u);
}

TEST(CrashRecord, ofAnInstructionIsIllegalOrPrivileged)
{
    EXPECT_EQ(codeOf(SIGILL, ILL_ILLOPN), 0xC000001Du);
    EXPECT_EQ(codeOf(SIGILL, ILL_PRVOPC), 0xC0000096u);
    EXPECT_EQ(codeOf(SIGILL, ILL_PRVREG), 0xC0000096u);
}

TEST(CrashRecord, ofArithmeticTellsWhatWentWrong)
{
    EXPECT_EQ(codeOf(SIGFPE, FPE_INTDIV), 0xC0000094u);
    EXPECT_EQ(codeOf(SIGFPE, FPE_INTOVF), 0xC0000095u);
    EXPECT_EQ(codeOf(SIGFPE, FPE_FLTDIV), 0xC000008Eu);
    EXPECT_EQ(codeOf(SIGFPE, FPE_FLTOVF), 0xC0000091u);
    EXPECT_EQ(codeOf(SIGFPE, FPE_FLTUND), 0xC0000093u);
    EXPECT_EQ(codeOf(SIGFPE, FPE_FLTRES), 0xC000008Fu);
    EXPECT_EQ(codeOf(SIGFPE, FPE_FLTINV), 0xC0000090u);
    EXPECT_EQ(codeOf(SIGFPE, FPE_FLTSUB), 0xC000008Cu);
}

TEST(CrashRecord, ofATrapIsABreakpointOrAStep)
{
    EXPECT_EQ(codeOf(SIGTRAP, TRAP_BRKPT), 0x80000003u);
    EXPECT_EQ(codeOf(SIGTRAP, SI_KERNEL), 0x80000003u);
    EXPECT_EQ(codeOf(SIGTRAP, TRAP_TRACE), 0x80000004u);
}
