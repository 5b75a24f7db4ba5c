#pragma once

namespace Schedules
{

/// From now on threads that run freely are held up at random where they take a lock; 0 ends that.
void delayAtLocks(unsigned seed);

} // namespace Schedules
