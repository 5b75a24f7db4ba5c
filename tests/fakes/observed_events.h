#pragma once

#include "fakes/fake_platform.h"
#include "platform/system_with.h"

#include <memory>
#include <stdexcept>
#include <utility>

namespace Fakes
{

/// An event that logs "event.set", "event.reset" and "event.destroyed".
class ObservedEvent final : public Platform::Event
{
public:
    ObservedEvent(CallLog& log, std::unique_ptr<Platform::Event> event) : log_(log), event_(std::move(event)) {}
    ~ObservedEvent() override { log_.add(L"event.destroyed"); }

    void set() override
    {
        log_.add(L"event.set");
        event_->set();
    }

    void reset() override
    {
        log_.add(L"event.reset");
        event_->reset();
    }

    void wait() override { event_->wait(); }

private:
    CallLog& log_;
    std::unique_ptr<Platform::Event> event_;
};

class ObservedEventThreads final : public FakeThreads
{
public:
    explicit ObservedEventThreads(CallLog& log) : FakeThreads(log), log_(log) {}

    /// How many events can still be made; the one behind them throws. A number below 0 for any number.
    int eventsLeft = -1;

    std::unique_ptr<Platform::Event> createEvent() override
    {
        if (eventsLeft == 0)
            throw std::runtime_error("no event left");
        --eventsLeft;
        return std::make_unique<ObservedEvent>(log_, FakeThreads::createEvent());
    }

private:
    CallLog& log_;
};

/// The system of a `FakePlatform`, with events that log their life, from construction to destruction. It stands
/// within the life of that platform.
class ObservedEvents
{
public:
    explicit ObservedEvents(FakePlatform& platform)
        : platform_(platform), threads(platform.log), system_(Platform::systemWith(platform.system(), threads))
    {
        Platform::setPlatform(&system_);
    }
    ~ObservedEvents() { Platform::setPlatform(&platform_.system()); }
    ObservedEvents(const ObservedEvents&) = delete;
    ObservedEvents& operator=(const ObservedEvents&) = delete;

private:
    FakePlatform& platform_;

public:
    ObservedEventThreads threads;

private:
    Platform::System system_;
};

} // namespace Fakes
