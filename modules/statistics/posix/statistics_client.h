#pragma once

#include "interfaces/statistics/posix/statistics_client.h"
#include "statistics/recorder.h"

#include <atomic>
#include <memory>

namespace StatisticsModule
{

/// The common operations of an object that is made with `new` and one reference.
template <class Interface> class Counted : public Interface
{
public:
    Counted() = default;
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

    std::uint32_t AddRef() override { return ++references_; }
    std::uint32_t Release() override
    {
        const std::uint32_t left = --references_;
        if (left == 0)
            delete this;
        return left;
    }

protected:
    virtual ~Counted() = default;

private:
    std::atomic<std::uint32_t> references_{1};
};

/// Hands every call to the recorder.
class StatisticsClient final : public Counted<IStatisticsClient>
{
public:
    explicit StatisticsClient(std::shared_ptr<Recorder> recorder);

    std::int32_t NotCalled1() override { return NotMade; }
    std::int32_t SetUserId(const wchar_t* id) override;
    std::int32_t SetClientId(const wchar_t* id) override;
    std::int32_t SetDimension(std::int32_t index, const wchar_t* text) override;
    std::int32_t SendView(const wchar_t* path, const wchar_t* title) override;
    std::int32_t SendViewEvent(const wchar_t* path, const wchar_t* action, const wchar_t* label,
                               std::int64_t value) override;
    std::int32_t SendEvent(const wchar_t* path, const wchar_t* category, const wchar_t* action, const wchar_t* label,
                           std::int64_t value) override;
    std::int32_t Flush() override;

private:
    const std::shared_ptr<Recorder> recorder_;
};

class StatisticsClientFactory final : public Counted<IStatisticsClientFactory>
{
public:
    explicit StatisticsClientFactory(std::shared_ptr<Recorder> recorder);

    std::int32_t CreateClient(std::int32_t kind, const wchar_t* endpoint, const wchar_t* site, const wchar_t* tag,
                              IStatisticsClient** client) override;

private:
    const std::shared_ptr<Recorder> recorder_;
};

/// What the module's export answers.
Result createFactory(IStatisticsClientFactory** factory, CreateRecorderFunction createRecorder) noexcept;

} // namespace StatisticsModule
