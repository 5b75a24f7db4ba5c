#pragma once

#include "schedules/staged_engine.h"

#include <deque>
#include <map>
#include <string>
#include <vector>

namespace Schedules
{

enum class JobKind
{
    Encrypt,
    EncryptAndWipe,
    EncryptSfx,
    Decrypt,
    Wipe,
};

/// What a user does with the progress window.
enum class Act
{
    Pause,      ///< as soon as he sees the window at work
    Resume,     ///< as soon as he sees it paused
    Cancel,     ///< as soon as he sees the window at work
    PauseTwice, ///< two clicks as soon as there is a window, seen or not
    HastyCancel,
    Key, ///< one that the window does not listen to
};

/// The answers to the questions of a job, in order. Where none is left: the question of the job itself is answered
/// yes, an error by skipping the file, a password with the right one.
struct Answers
{
    bool declines = false;                              ///< the question of the job itself
    std::map<std::wstring, std::deque<int>> fileErrors; ///< 0 repeat, 1 skip, 2 abort
    std::deque<int> passwords;
};

struct JobPlan
{
    JobKind kind = JobKind::Wipe;
    EnginePlan engine;
    /// One row for each user at the progress window.
    std::vector<std::vector<Act>> users;
    Answers answers;
    bool dialogsWithLoop = true;
    bool paced = true; ///< the display rests between two wakes
};

/// A job of any kind, with anything that may happen in it.
JobPlan randomPlan(unsigned seed);

} // namespace Schedules
