#pragma once

#include <cstdint>

namespace Halden::SystemUtilities
{

/// Counts seconds of wall-clock time and can be paused. No lock: its owner guards it.
class Stopwatch
{
public:
    /// Starts again from 0.
    void restart();
    /// Goes on after `stop`; a running watch is not touched.
    void resume();
    void stop();
    /// Seconds counted so far, cut to 32 bits.
    std::uint32_t elapsed();

private:
    std::int64_t start_ = 0; ///< 0 while paused
    std::int64_t accumulated_ = 0;
};

} // namespace Halden::SystemUtilities
