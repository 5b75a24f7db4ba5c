#include "platform/posix/alternate_stack.h"
#include "platform/posix/concerns.h"

#include <unistd.h>

#include <chrono>
#include <condition_variable>
#include <ctime>
#include <mutex>
#include <system_error>
#include <thread>

namespace Platform
{

namespace
{

class PosixThread : public Thread
{
public:
    explicit PosixThread(std::thread thread) : thread_(std::move(thread)) {}
    ~PosixThread() override
    {
        if (thread_.joinable())
            thread_.detach();
    }
    void wait() override
    {
        if (thread_.joinable())
            thread_.join();
    }

private:
    std::thread thread_;
};

class PosixEvent : public Event
{
public:
    void set() override
    {
        // Told with the lock held: the one who waits may destroy the event as soon as it has the lock.
        const std::lock_guard guard(lock_);
        signalled_ = true;
        ++sets_;
        changed_.notify_all();
    }

    void reset() override
    {
        const std::lock_guard guard(lock_);
        signalled_ = false;
    }

    void wait() override
    {
        std::unique_lock guard(lock_);
        // Whoever waits already is let go even when the event is reset before he runs.
        const std::uint64_t before = sets_;
        changed_.wait(guard, [&] { return signalled_ || sets_ != before; });
    }

private:
    std::mutex lock_;
    std::condition_variable changed_;
    bool signalled_ = false;
    std::uint64_t sets_ = 0;
};

class PosixThreads : public Threads
{
public:
    std::unique_ptr<Thread> start(std::function<void()> procedure) override
    {
        try
        {
            return std::make_unique<PosixThread>(std::thread(
                [procedure = std::move(procedure)]
                {
                    const AlternateStack stack;
                    procedure();
                }));
        }
        catch (const std::system_error&)
        {
            return nullptr;
        }
    }

    std::unique_ptr<Event> createEvent() override { return std::make_unique<PosixEvent>(); }
    std::uint32_t currentThreadId() override { return static_cast<std::uint32_t>(gettid()); }
    void sleep(std::uint32_t milliseconds) override
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    }
    std::uint32_t tickCount() override
    {
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        return static_cast<std::uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
    }
    std::int64_t time() override { return std::time(nullptr); }
    void enterMultithreadedApartment() override {}

    // A thread cannot be raised above the others without a privilege, so every one has the normal priority.
    ThreadReference currentThread() override { return this; }
    ThreadReference currentThreadFunction() override { return nullptr; }
    int priority(ThreadReference thread) override
    {
        return thread == currentThread() ? PriorityNormal : PriorityErrorReturn;
    }
    bool setPriority(ThreadReference thread, int priority) override
    {
        return thread == currentThread() && priority == PriorityNormal;
    }
};

} // namespace

Threads& posixThreads()
{
    static PosixThreads threads;
    return threads;
}

} // namespace Platform
