#pragma once

#include "platform/handles.h"

#include <cstdint>

namespace JobRunner
{

/// Waits for a handle, at most `limit` milliseconds behind the last message, and dispatches the messages of the calling
/// thread meanwhile. What `waitOrMessage` gave last. Any thread.
std::uint32_t PumpWait(Platform::Handle handle, std::uint32_t limit);

} // namespace JobRunner
