#pragma once

#include <cstdio>
#include <functional>
#include <memory>

namespace Benchmarks
{

/// Runs `measure` where the progress display really draws, and gives its exit code. On Linux that is a terminal of its
/// own, from which another process reads everything; the results go to where this process writes.
int runWithDisplay(int (*measure)(std::FILE* results));

/// Holds up the own thread of the progress display from construction to destruction, for five seconds at least: on
/// Windows in the handling of a message, on Linux in a write to a terminal that was stopped as by Ctrl+S.
class HangingDisplay
{
public:
    /// The display is open and seen. Returns when its thread hangs; `change` gives the display something new to show.
    explicit HangingDisplay(const std::function<void()>& change);
    /// Waits for the rest of the five seconds, and until the thread works again.
    ~HangingDisplay();
    HangingDisplay(const HangingDisplay&) = delete;
    HangingDisplay& operator=(const HangingDisplay&) = delete;

    bool hangs() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace Benchmarks
