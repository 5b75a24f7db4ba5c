#include "crashes/ways_to_crash.h"

#include "platform/messages.h"
#include "platform/modules.h"
#include "platform/platform.h"
#include "platform/threads.h"

#include <cstdint>
#include <exception>
#include <functional>
#include <map>
#include <stdexcept>
#include <thread>

namespace CrashingApplication
{

namespace
{

using Way = std::function<void()>;

// What the compiler cannot look through.
volatile std::uintptr_t nowhere = 0;
volatile std::uintptr_t unmapped = 0x1234;
volatile int zero = 0;

void writeNull()
{
    *reinterpret_cast<volatile int*>(nowhere) = 1;
}

void readUnmapped()
{
    static_cast<void>(*reinterpret_cast<volatile int*>(unmapped));
}

void divide()
{
    zero = 100 / zero;
}

void useUpTheStack()
{
    volatile char room[1024] = {};
    room[zero] = 1;
    useUpTheStack();
    zero = room[zero];
}

[[noreturn]] void throwException()
{
    throw std::runtime_error("nobody catches it");
}

[[noreturn]] void throwNumber()
{
    throw 7;
}

void promiseTooMuch() noexcept
{
    throwException();
}

/// Calls a function that its object does not have yet.
struct Unfinished
{
    Unfinished() { call(); }
    virtual ~Unfinished() = default;
    void call() { function(); }
    virtual void function() = 0;
};

struct Finished : Unfinished
{
    void function() override {}
};

void callPureVirtual()
{
    const Finished object;
}

void onThread(const Way& way)
{
    const auto thread = Platform::platform().threads.start(way);
    thread->wait();
}

void onPlainThread(const Way& way)
{
    std::thread(way).join();
}

void inMessageLoop(const Way& way)
{
    const auto thread = Platform::platform().threads.start(way);
    Platform::platform().messages.runLoop();
}

void twice(const Way& way)
{
    std::thread other(way);
    way();
    other.join();
}

void inModule(const std::wstring& module, const char* name)
{
    Platform::Modules& modules = Platform::platform().modules;
    reinterpret_cast<void (*)()>(modules.findExport(modules.load(module), name))();
}

} // namespace

void crash(const std::string& way, const std::wstring& module)
{
    const std::map<std::string, Way> ways = {
        {"null-write", writeNull},
        {"unmapped-read", readUnmapped},
        {"illegal-instruction", runIllegalInstruction},
        {"breakpoint", runBreakpoint},
        {"division", divide},
        {"stack-overflow", useUpTheStack},
        {"stack-overflow-on-thread", [] { onThread(useUpTheStack); }},
        {"stack-overflow-on-plain-thread", [] { onPlainThread(useUpTheStack); }},
        {"null-write-on-thread", [] { onThread(writeNull); }},
        {"null-write-on-plain-thread", [] { onPlainThread(writeNull); }},
        {"exception", throwException},
        {"exception-on-thread", [] { onThread(throwException); }},
        {"exception-on-plain-thread", [] { onPlainThread(throwException); }},
        {"foreign-exception", throwNumber},
        {"broken-noexcept", promiseTooMuch},
        {"terminate", std::terminate},
        {"pure-virtual", callPureVirtual},
        {"module-null-write", [&] { inModule(module, "writeNull"); }},
        {"module-exception", [&] { inModule(module, "throwException"); }},
        {"module-handled", [&] { inModule(module, "handleAFault"); }},
        {"module-exception-on-its-thread", [&] { inModule(module, "throwExceptionOnThread"); }},
        {"null-write-beside-message-loop", [] { inMessageLoop(writeNull); }},
        {"exception-beside-message-loop", [] { inMessageLoop(throwException); }},
        {"two-null-writes", [] { twice(writeNull); }},
        {"two-exceptions", [] { twice(throwException); }},
    };
    if (const auto found = ways.find(way); found != ways.end())
        found->second();
    crashInTheWayOfTheSystem(way);
}

} // namespace CrashingApplication
