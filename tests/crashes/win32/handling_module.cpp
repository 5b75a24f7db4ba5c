#include <windows.h>

// What a module does that another compiler has made: it handles a fault of its own.

namespace
{

EXCEPTION_DISPOSITION __cdecl stepOverTheFault(EXCEPTION_RECORD*, void*, CONTEXT* context, void*)
{
    constexpr DWORD LengthOfTheFault = 2;
    context->Eip += LengthOfTheFault;
    return ExceptionContinueExecution;
}

} // namespace

/// Comes back.
extern "C" void handleAFault()
{
    EXCEPTION_REGISTRATION_RECORD frame{};
    frame.Handler = reinterpret_cast<decltype(frame.Handler)>(stepOverTheFault);
    asm volatile("movl %%fs:0, %0" : "=r"(frame.Next));
    asm volatile("movl %0, %%fs:0\n\tud2" ::"r"(&frame) : "memory");
    asm volatile("movl %0, %%fs:0" ::"r"(frame.Next) : "memory");
}
