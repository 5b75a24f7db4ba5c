#include "vaultcore/parallel.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace VaultCore
{
namespace
{

/// Much of the work waits for the device, so also a single processor has a use for several.
constexpr std::size_t Threads = 4;

class ParallelWork
{
public:
    ParallelWork(std::size_t count, const std::function<void(std::size_t)>& work) : count_(count), work_(work) {}

    void run()
    {
        for (std::size_t next = next_++; next < count_ && !failed_; next = next_++)
            runOne(next);
    }

    void throwFailure() const
    {
        if (failure_)
            std::rethrow_exception(failure_);
    }

private:
    void runOne(std::size_t number)
    {
        try
        {
            work_(number);
        }
        catch (...)
        {
            const std::lock_guard lock(mutex_);
            if (!failed_.exchange(true))
                failure_ = std::current_exception();
        }
    }

    const std::size_t count_;
    const std::function<void(std::size_t)>& work_;
    std::atomic<std::size_t> next_ = 0;
    std::atomic<bool> failed_ = false;
    std::mutex mutex_;
    std::exception_ptr failure_;
};

} // namespace

void inParallel(std::size_t count, const std::function<void(std::size_t)>& work)
{
    ParallelWork shared(count, work);
    {
        std::vector<std::jthread> helpers;
        try
        {
            helpers.reserve(Threads);
            while (helpers.size() + 1 < std::min(Threads, count))
                helpers.emplace_back([&] { shared.run(); });
        }
        catch (const std::exception&)
        {
            // Those that there are will do.
        }
        shared.run();
    }
    shared.throwFailure();
}

} // namespace VaultCore
