#include "watcher/process_time.h"

#include <ctime>

namespace Benchmarks
{

std::chrono::nanoseconds processTime()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

} // namespace Benchmarks
