#include "crashes/ways_to_crash.h"

#include <fcntl.h>
#include <fenv.h>
#include <malloc.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <map>
#include <thread>

namespace CrashingApplication
{

namespace
{

volatile double zero = 0;

void divideFloats()
{
    feenableexcept(FE_DIVBYZERO);
    zero = 1 / zero;
}

/// Reads a mapped file behind its end.
void readLostPage()
{
    const int file = memfd_create("short", MFD_CLOEXEC);
    const long size = sysconf(_SC_PAGESIZE);
    const void* const memory = mmap(nullptr, static_cast<std::size_t>(size), PROT_READ, MAP_SHARED, file, 0);
    static_cast<void>(*static_cast<const volatile char*>(memory));
}

/// The heap finds its list damaged while it has its lock.
void crashInTheHeap()
{
    std::thread([] {}).join(); // from now on the heap takes its lock
    constexpr std::size_t Large = 3000;
    void* const block = malloc(Large);
    void* const behind = malloc(Large);
    void** volatile const links = static_cast<void**>(block);
    free(block);
    links[1] = reinterpret_cast<void*>(std::uintptr_t{0x1000});
    free(malloc(2 * Large));
    free(behind);
}

/// In a child that shares nothing of the reporter. This process ends as the child did.
void crashInAChild()
{
    const pid_t child = fork();
    if (child == 0)
        raise(SIGSEGV);
    int status = 0;
    waitpid(child, &status, 0);
    _exit(WIFSIGNALED(status) ? WTERMSIG(status) : 0);
}

} // namespace

void crashInTheWayOfTheSystem(const std::string& way)
{
    const std::map<std::string, std::function<void()>> ways = {
        {"float-division", divideFloats}, {"lost-page", readLostPage},
        {"heap", crashInTheHeap},         {"sent-signal", [] { kill(getpid(), SIGSEGV); }},
        {"child", crashInAChild},
    };
    if (const auto found = ways.find(way); found != ways.end())
        found->second();
}

void runIllegalInstruction()
{
    __builtin_trap();
}

void runBreakpoint()
{
    raise(SIGTRAP);
}

} // namespace CrashingApplication
