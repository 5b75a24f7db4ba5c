#pragma once

#include <functional>
#include <random>
#include <utility>

#include "windows/running_program.h"

namespace EndToEnd
{

/// A user without patience in front of a progress window. What the window does not do in time is a failure of the test.
class RestlessUser
{
public:
    explicit RestlessUser(unsigned seed) : random_(seed) {}

    /// True once in `count` times.
    bool oneIn(unsigned count) { return random_() % count == 0; }
    unsigned below(unsigned count) { return static_cast<unsigned>(random_() % count); }

    /// The window that the next operations are about.
    void sitsDownAt(Window progress) { progress_ = progress; }
    const Window& progress() const { return progress_; }
    /// Tells when something else has come in front of that window, which then may do nothing.
    void looksOutFor(std::function<bool()> interruption) { interrupted_ = std::move(interruption); }

    /// Pauses, resumes, minimises, hides, brings back, tries to close or waits.
    void actOnce();
    /// False when the window's thread takes no message any more, though the window is there.
    bool isAnswered() const;
    /// Makes a window that the mouse can reach.
    void bringBack();
    void pressPause();
    void resumeIfPaused();
    /// Clicks on Cancel, after a resume if it takes one; false when the window has gone before.
    bool cancel();

    int actions() const { return actions_; }
    int clicks() const { return clicks_; }

private:
    /// Waits for an effect on the window; there is none when the job is over or something has come in front.
    void expect(const std::function<bool()>& effect);
    void pressKey();

    std::mt19937 random_;
    Window progress_;
    std::function<bool()> interrupted_ = [] { return false; };
    int actions_ = 0;
    int clicks_ = 0;
};

/// How long one soak goes on: the same variable as for the schedules of the unit tests.
std::chrono::seconds soakDuration(int usualSeconds);
/// The seed of the first round: that of JOBRUNNER_SOAK_SEED, or any.
unsigned firstSoakSeed();

} // namespace EndToEnd
