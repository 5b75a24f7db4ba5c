#include "platform/win32/concerns.h"
#include "platform/win32/crash_deputy.h"
#include "platform/win32/own_code.h"

#include <windows.h>

#include <atomic>
#include <exception>

namespace Platform
{

namespace
{

/// What the system has to find a thread's filter when the thread has used up its stack.
constexpr ULONG RoomToFindTheFilter = 16 * 1024;

constexpr ULONG_PTR MarkOfOurs = 0x4A6F6252;

std::atomic<CrashFilter> installed{nullptr};
std::atomic<CrashDeputy*> deputy{nullptr};
std::atomic<const OwnCode*> ownCode{nullptr};
/// The thread whose crash is reported, 0 before any, and how that crash ends the process.
std::atomic<DWORD> reportingThread{0};
std::atomic<DWORD> endingCode{0};

bool reportsHere()
{
    return reportingThread == GetCurrentThreadId();
}

std::int32_t runFilter(const ExceptionRecord& record)
{
    CrashDeputy& other = *deputy.load();
    if (record.code != ExceptionStackOverflow || other.threadId() == 0)
        return installed.load()(record);
    reportingThread = other.threadId();
    return other.run(installed, record);
}

/// The system calls it on the thread that crashed. What the filter throws is nobody's to catch.
LONG WINAPI report(EXCEPTION_POINTERS* pointers) noexcept
{
    // The filter itself crashed: its crash is not reported, the process ends by the first one.
    if (reportsHere())
        TerminateProcess(GetCurrentProcess(), endingCode);
    DWORD none = 0;
    // The first report wins. The others wait for the end of the process, so that the user gets to see the box.
    if (!reportingThread.compare_exchange_strong(none, GetCurrentThreadId()))
        Sleep(INFINITE);
    const EXCEPTION_RECORD& exception = *pointers->ExceptionRecord;
    endingCode = exception.ExceptionCode;
    return runFilter({exception.ExceptionCode, reinterpret_cast<std::uintptr_t>(exception.ExceptionAddress)});
}

/// An exception of the language that nobody catches ends here and never reaches the system's filter by itself.
[[noreturn]] void raiseForTheFilter()
{
    if (reportsHere())
        TerminateProcess(GetCurrentProcess(), endingCode);
    // Others raise the same code for exceptions that they do catch.
    RaiseException(ExceptionOfTheLanguage, EXCEPTION_NONCONTINUABLE, 1, &MarkOfOurs);
    __builtin_unreachable();
}

/// The innermost of the thread's frames with a handler, where its stack was when it crashed; null for none.
const EXCEPTION_REGISTRATION_RECORD* handlingFrame(const CONTEXT& context)
{
    const EXCEPTION_REGISTRATION_RECORD* const end = reinterpret_cast<EXCEPTION_REGISTRATION_RECORD*>(-1);
    const EXCEPTION_REGISTRATION_RECORD* frame = nullptr;
    // The first word of the thread's block; the compiler takes the system's own way to it for a fault.
    asm("movl %%fs:0, %0" : "=r"(frame));
    while (frame != end && reinterpret_cast<std::uintptr_t>(frame) < context.Esp)
        frame = frame->Next;
    return frame != end ? frame : nullptr;
}

/// The program's own frames have no handlers, but for the one of its start-up. A module that another compiler has made
/// may handle its faults by itself.
bool mayBeHandled(const CONTEXT& context)
{
    const EXCEPTION_REGISTRATION_RECORD* const frame = handlingFrame(context);
    if (!frame)
        return false;
    const void* const handler = reinterpret_cast<const void*>(frame->Handler);
    return ownCode.load()->contains(handler) && !ownCode.load()->isOfTheProgram(handler);
}

bool isFaultOfOurs(const EXCEPTION_POINTERS& pointers)
{
    const EXCEPTION_RECORD& exception = *pointers.ExceptionRecord;
    if (exception.ExceptionCode >> 28 != 0xC)
        return false;
    const OwnCode& code = *ownCode.load();
    // No stack is left for more than that.
    if (exception.ExceptionCode == ExceptionStackOverflow)
        return code.isOfTheProgram(exception.ExceptionAddress);
    return code.contains(exception.ExceptionAddress) && !mayBeHandled(*pointers.ContextRecord);
}

bool isUncaught(const EXCEPTION_RECORD& exception)
{
    return exception.ExceptionCode == ExceptionOfTheLanguage && exception.NumberParameters == 1 &&
           exception.ExceptionInformation[0] == MarkOfOurs;
}

/// The system drops exceptions that leave a window procedure which it has called itself, and the program would run on
/// behind them. So a fault of ours is reported before anybody is asked, unless that is a module of ours.
LONG WINAPI reportAtOnce(EXCEPTION_POINTERS* pointers)
{
    const EXCEPTION_RECORD& exception = *pointers->ExceptionRecord;
    if (!isUncaught(exception) && !isFaultOfOurs(*pointers))
        return EXCEPTION_CONTINUE_SEARCH;
    report(pointers);
    TerminateProcess(GetCurrentProcess(), endingCode);
    return EXCEPTION_CONTINUE_SEARCH;
}

void keepRoom()
{
    ULONG size = RoomToFindTheFilter;
    SetThreadStackGuarantee(&size);
}

void NTAPI onThread(void*, DWORD reason, void*)
{
    if (reason == DLL_THREAD_ATTACH)
        keepRoom();
}

class Win32Crashes : public Crashes
{
public:
    void setUnhandledExceptionFilter(CrashFilter filter) override
    {
        installed = filter;
        if (deputy)
            return;
        deputy = new CrashDeputy; // kept until the process ends
        ownCode = new OwnCode;
        keepRoom();
        SetUnhandledExceptionFilter(report);
        AddVectoredExceptionHandler(0, reportAtOnce);
        std::set_terminate(raiseForTheFilter);
    }
};

} // namespace

Crashes& win32Crashes()
{
    static Win32Crashes concern;
    return concern;
}

} // namespace Platform

/// Tells the system to call `onThread` on every thread of the process that starts, whoever starts it.
extern "C" [[gnu::used, gnu::section(".CRT$XLJ")]] const PIMAGE_TLS_CALLBACK jobRunnerThreadCallback =
    Platform::onThread;
