#pragma once

#include "platform/platform.h"
#include "platform/threads.h"

namespace JobRunner
{

inline constexpr std::uint32_t EnginePollStep = 200; // milliseconds

/// Waits until the engine has finished the work of `runner`, without a limit. Job thread.
template <class Runner> void waitUntilFinished(Runner& runner)
{
    while (!runner.IsFinished())
        Platform::platform().threads.sleep(EnginePollStep);
}

} // namespace JobRunner
