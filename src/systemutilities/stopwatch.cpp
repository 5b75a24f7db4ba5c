#include "systemutilities/stopwatch.h"

#include "platform/platform.h"
#include "platform/threads.h"

namespace Halden::SystemUtilities
{

namespace
{
std::int64_t now()
{
    return Platform::platform().threads.time();
}
} // namespace

void Stopwatch::restart()
{
    accumulated_ = 0;
    start_ = now();
}

void Stopwatch::resume()
{
    if (start_ == 0)
        start_ = now();
}

void Stopwatch::stop()
{
    if (start_ == 0)
        return;
    accumulated_ += now() - start_;
    start_ = 0;
}

std::uint32_t Stopwatch::elapsed()
{
    if (start_ != 0)
    {
        const std::int64_t present = now();
        accumulated_ += present - start_;
        start_ = present;
    }
    return static_cast<std::uint32_t>(accumulated_);
}

} // namespace Halden::SystemUtilities
