#include "platform/posix/concerns.h"
#include "platform/posix/handle_table.h"

#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <chrono>

namespace Platform
{

namespace
{

using Clock = std::chrono::steady_clock;

thread_local std::uint32_t lastErrorOfThread = 0;

timespec timeLeft(Clock::time_point end)
{
    const auto left = std::max(end - Clock::now(), Clock::duration::zero());
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(left);
    const auto rest = std::chrono::duration_cast<std::chrono::nanoseconds>(left - seconds);
    return {static_cast<time_t>(seconds.count()), static_cast<long>(rest.count())};
}

std::uint32_t waitFor(int descriptor, std::uint32_t limit)
{
    const Clock::time_point end = Clock::now() + std::chrono::milliseconds(limit);
    while (true)
    {
        pollfd waiting{descriptor, POLLIN, 0};
        const timespec left = timeLeft(end);
        const int ready = ppoll(&waiting, 1, limit == WaitForever ? nullptr : &left, nullptr);
        if (ready >= 0)
            return ready > 0 ? WaitSignalled : WaitTimedOut;
        if (errno != EINTR)
            return WaitFailed;
    }
}

class PosixHandles : public Handles
{
public:
    bool close(Handle handle) override { return handleTable().remove(handle); }

    std::uint32_t wait(Handle handle, std::uint32_t limit, bool) override
    {
        const auto object = handleTable().find(handle);
        if (!object)
            return WaitFailed;
        const std::uint32_t result = waitFor(object->descriptor(), limit);
        if (result == WaitSignalled)
            object->onSignalled();
        return result;
    }

    // The threads that wait here own no window, so that no message can come for them.
    std::uint32_t waitOrMessage(Handle handle, std::uint32_t limit, std::uint32_t) override
    {
        return wait(handle, limit, false);
    }

    std::uint32_t lastError() override { return lastErrorOfThread; }
    void setLastError(std::uint32_t error) override { lastErrorOfThread = error; }
};

} // namespace

Handles& posixHandles()
{
    static PosixHandles handles;
    return handles;
}

} // namespace Platform
