#include "schedules/hooked_locks.h"

#include "schedules/scheduler.h"

#include <pthread.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <random>
#include <thread>

// The linker puts these in the place of the operations that every std::mutex and std::condition_variable of this
// program ends in (CMakeLists.txt: --wrap), so that the classes under test are the ones that ship, without a word about
// schedules in them.

namespace
{

using Schedules::Scheduler;

std::atomic<unsigned> delaySeed{0};

/// A thread that runs freely is held up at random where it takes a lock, if a test wants that.
void delay()
{
    const unsigned seed = delaySeed;
    if (seed == 0)
        return;
    thread_local std::minstd_rand random(
        seed + static_cast<unsigned>(std::hash<std::thread::id>()(std::this_thread::get_id())));
    const auto chance = random() % 64;
    if (chance == 0)
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 200));
    else if (chance < 16)
        std::this_thread::yield();
}

} // namespace

void Schedules::delayAtLocks(unsigned seed)
{
    delaySeed = seed;
}

extern "C"
{
    /// Orders of locks are the scheduler's to find, and two wrong ones are planted for it: the thread sanitizer is here
    /// for races.
    const char* __tsan_default_options()
    {
        return "detect_deadlocks=0";
    }

    int __real_pthread_mutex_lock(pthread_mutex_t* mutex);
    int __real_pthread_mutex_unlock(pthread_mutex_t* mutex);
    // std::condition_variable: wait, notify_one, notify_all.
    void __real__ZNSt18condition_variable4waitERSt11unique_lockISt5mutexE(std::condition_variable* condition,
                                                                          std::unique_lock<std::mutex>& guard);
    void __real__ZNSt18condition_variable10notify_oneEv(std::condition_variable* condition);
    void __real__ZNSt18condition_variable10notify_allEv(std::condition_variable* condition);

    int __wrap_pthread_mutex_lock(pthread_mutex_t* mutex)
    {
        if (Scheduler* const scheduler = Scheduler::ofThisThread())
            scheduler->lock(mutex);
        else
            delay();
        return __real_pthread_mutex_lock(mutex);
    }

    int __wrap_pthread_mutex_unlock(pthread_mutex_t* mutex)
    {
        const int result = __real_pthread_mutex_unlock(mutex);
        if (Scheduler* const scheduler = Scheduler::ofThisThread())
            scheduler->unlock(mutex);
        return result;
    }

    void __wrap__ZNSt18condition_variable4waitERSt11unique_lockISt5mutexE(std::condition_variable* condition,
                                                                          std::unique_lock<std::mutex>& guard)
    {
        Scheduler* const scheduler = Scheduler::ofThisThread();
        if (!scheduler)
            return __real__ZNSt18condition_variable4waitERSt11unique_lockISt5mutexE(condition, guard);
        pthread_mutex_t* const mutex = guard.mutex()->native_handle();
        __real_pthread_mutex_unlock(mutex);
        scheduler->wait(condition, mutex);
        __real_pthread_mutex_lock(mutex);
    }

    void __wrap__ZNSt18condition_variable10notify_oneEv(std::condition_variable* condition)
    {
        if (Scheduler* const scheduler = Scheduler::ofThisThread())
            scheduler->notify(condition, false);
        else
            __real__ZNSt18condition_variable10notify_oneEv(condition);
    }

    void __wrap__ZNSt18condition_variable10notify_allEv(std::condition_variable* condition)
    {
        if (Scheduler* const scheduler = Scheduler::ofThisThread())
            scheduler->notify(condition, true);
        else
            __real__ZNSt18condition_variable10notify_allEv(condition);
    }
}
