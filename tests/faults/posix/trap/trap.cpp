#include "trap.h"

#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string_view>
#include <sys/syscall.h>
#include <unistd.h>

namespace Trap
{
namespace
{

// Without memory from the heap, and by plain system calls: this runs inside of every call of the program.

struct Plan
{
    char folder[PATH_MAX] = {};
    std::size_t length = 0;
    int log = -1;
    long step = 0;
    Act act = Act::Pass;
    bool fromThereOn = false;
    int error = EIO;
};

Plan plan;
std::atomic<long> calls{0};

Act actOf(std::string_view deed)
{
    if (deed == "end")
        return Act::End;
    if (deed == "tear")
        return Act::Tear;
    if (deed == "short")
        return Act::Short;
    return deed == "once" || deed == "on" ? Act::Fail : Act::Pass;
}

const char* variable(const char* name)
{
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

__attribute__((constructor)) void readPlan()
{
    // Programs that this one starts are left alone.
    std::snprintf(plan.folder, sizeof(plan.folder), "%s", variable("JOBRUNNER_TRAP_FOLDER"));
    plan.act = actOf(variable("JOBRUNNER_TRAP_DEED"));
    plan.fromThereOn = std::string_view(variable("JOBRUNNER_TRAP_DEED")) == "on";
    plan.step = std::atol(variable("JOBRUNNER_TRAP_STEP"));
    plan.error = std::atoi(variable("JOBRUNNER_TRAP_ERROR"));
    const int flags = O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC;
    plan.log = static_cast<int>(syscall(SYS_openat, AT_FDCWD, variable("JOBRUNNER_TRAP_LOG"), flags, 0600));
    plan.length = std::strlen(plan.folder);
    ::unsetenv("LD_PRELOAD");
}

/// Where an open file is. False when it has no place among the files.
bool placeOf(int descriptor, char* place, std::size_t size)
{
    char link[64];
    std::snprintf(link, sizeof(link), descriptor == AT_FDCWD ? "/proc/self/cwd" : "/proc/self/fd/%d", descriptor);
    const long length = syscall(SYS_readlinkat, AT_FDCWD, link, place, size - 1);
    if (length <= 0)
        return false;
    place[length] = '\0';
    return place[0] == '/';
}

bool isBelow(const char* place)
{
    return std::strncmp(place, plan.folder, plan.length) == 0 &&
           (place[plan.length] == '/' || place[plan.length] == '\0' || place[plan.length] == ' ');
}

void log(const char* name, const char* place, const char* path)
{
    char line[2 * PATH_MAX + 64];
    const int length = std::snprintf(line, sizeof(line), "%s %s%s%s\n", name, place, path == nullptr ? "" : "/",
                                     path == nullptr ? "" : path);
    if (plan.log >= 0)
        syscall(SYS_write, plan.log, line, static_cast<std::size_t>(length));
}

} // namespace

Act nextCall(const char* name, int descriptor, const char* path)
{
    if (plan.length == 0)
        return Act::Pass;
    const int before = errno;
    char place[PATH_MAX] = {};
    const bool absolute = path != nullptr && path[0] == '/';
    if (!absolute && !placeOf(descriptor, place, sizeof(place)))
    {
        errno = before;
        return Act::Pass;
    }
    const bool counted = isBelow(absolute ? path : place);
    errno = before;
    if (!counted)
        return Act::Pass;
    const long number = ++calls;
    log(name, absolute ? "" : place, absolute ? path + 1 : path);
    errno = before;
    if (plan.step == 0 || (number != plan.step && !(plan.fromThereOn && number > plan.step)))
        return Act::Pass;
    if (plan.act == Act::End)
        endProcess();
    if (plan.act == Act::Fail)
        errno = plan.error;
    return plan.act;
}

void endProcess()
{
    for (;;)
        syscall(SYS_kill, syscall(SYS_getpid), SIGKILL);
}

} // namespace Trap
