#pragma once

#include "schedules/scheduler.h"

#include <semaphore.h>

// What the scheduler is made of, for its own sources alone.

namespace Schedules
{

enum class Doing
{
    Running,
    TakingLock,
    Waiting,
    Sleeping,
    Joining,
    Nothing, ///< has ended
};

/// A semaphore of the system's own, which no hook touches.
struct Scheduler::Signal
{
    Signal() { sem_init(&semaphore, 0, 0); }
    ~Signal() { sem_destroy(&semaphore); }
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;

    void give() { sem_post(&semaphore); }
    void await()
    {
        while (sem_wait(&semaphore) != 0)
            ;
    }

    sem_t semaphore;
};

struct Scheduler::Thread
{
    std::function<void()> procedure;
    const char* name = "thread";
    Doing doing = Doing::Running;
    const void* mutex = nullptr; ///< that it wants, or wants back after a wait
    const void* condition = nullptr;
    std::int64_t wakesAt = 0;
    Id joined = 0;
    std::vector<const void*> held;
    Signal turn;
    std::thread system;
};

} // namespace Schedules
