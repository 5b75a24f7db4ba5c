#pragma once

#include "platform/threads.h"

namespace Schedules
{

/// For the story of a run; nothing for a thread that runs freely.
void nameThisThread(const char* name);

/// Threads and time of a run: those of the scheduler on its threads; otherwise real ones, whose sleep is short.
class StagedThreads final : public Platform::Threads
{
public:
    std::unique_ptr<Platform::Thread> start(std::function<void()> procedure) override;
    /// The event that ships: its locks are hooked as all others.
    std::unique_ptr<Platform::Event> createEvent() override;
    std::uint32_t currentThreadId() override;
    void sleep(std::uint32_t milliseconds) override;
    std::uint32_t tickCount() override;
    std::int64_t time() override;
    void enterMultithreadedApartment() override {}
    Platform::ThreadReference currentThread() override { return this; }
    Platform::ThreadReference currentThreadFunction() override { return nullptr; }
    int priority(Platform::ThreadReference) override { return Platform::PriorityNormal; }
    bool setPriority(Platform::ThreadReference, int) override { return true; }
};

} // namespace Schedules
