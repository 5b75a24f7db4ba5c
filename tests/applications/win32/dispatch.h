#pragma once

namespace Applications
{

/// Hands out the messages that wait for this thread.
void dispatchAll();

} // namespace Applications
