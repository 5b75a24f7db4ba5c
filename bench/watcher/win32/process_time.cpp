#include "watcher/process_time.h"

#include <windows.h>

namespace Benchmarks
{

namespace
{

std::chrono::nanoseconds duration(const FILETIME& time)
{
    const ULARGE_INTEGER steps{{time.dwLowDateTime, time.dwHighDateTime}};
    return std::chrono::nanoseconds(100) * static_cast<std::int64_t>(steps.QuadPart);
}

} // namespace

std::chrono::nanoseconds processTime()
{
    FILETIME created{};
    FILETIME ended{};
    FILETIME system{};
    FILETIME user{};
    GetProcessTimes(GetCurrentProcess(), &created, &ended, &system, &user);
    return duration(system) + duration(user);
}

} // namespace Benchmarks
