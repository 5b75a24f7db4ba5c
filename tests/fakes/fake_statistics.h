#pragma once

#include "fakes/fake_call_log.h"
#include "platform/statistics.h"

#include <functional>
#include <map>
#include <memory>
#include <string>

namespace Fakes
{

/// The statistics component, which is not installed unless a test says so, and runs inside the process alone. Logs
/// every call with its arguments: "statistics.CoCreateInstance(23)", "statistics.CreateClient(1, ENDPOINT, SITE, TAG)",
/// "statistics.SetUserId(ID)", "statistics.SetClientId(ID)", "statistics.SetDimension(1, TEXT)",
/// "statistics.SendView(PATH, TITLE)", "statistics.SendViewEvent(PATH, ACTION, LABEL, VALUE)",
/// "statistics.SendEvent(PATH, CATEGORY, ACTION, LABEL, VALUE)", "statistics.Flush()", "statistics.ReleaseClient()" and
/// "statistics.ReleaseFactory()". The members are set before other threads use it. A client that outlives the fake does
/// nothing more.
class FakeStatistics : public Platform::Statistics
{
public:
    explicit FakeStatistics(CallLog& log);
    ~FakeStatistics() override;
    FakeStatistics(const FakeStatistics&) = delete;
    FakeStatistics& operator=(const FakeStatistics&) = delete;

    /// "Class not registered".
    static constexpr Platform::StatisticsResult NotRegistered = -2147221164;
    /// "One or more arguments are not valid", for another kind than 1.
    static constexpr Platform::StatisticsResult InvalidArgument = -2147024809;
    /// "Unspecified failure".
    static constexpr Platform::StatisticsResult Failure = -2147467259;

    bool installed = false;
    /// What each operation answers, by its name, such as "CreateClient" or "SendView"; success where none is given.
    std::map<std::wstring, Platform::StatisticsResult> results;
    /// What the operations of a client answer that have no result of their own.
    Platform::StatisticsResult clientResult = 0;
    /// Runs in each call after it is logged, with the text that is logged.
    std::function<void(const std::wstring&)> onCall;

    Platform::StatisticsResult createFactory(std::uint32_t context,
                                             std::unique_ptr<Platform::StatisticsFactory>& factory) override;

private:
    class Client;
    class Factory;
    /// What factories and clients know of the fake: where it is, null when it is gone.
    struct Link
    {
        FakeStatistics* owner = nullptr;
    };

    Platform::StatisticsResult call(const std::wstring& operation, const std::wstring& arguments,
                                    Platform::StatisticsResult otherwise);

    CallLog& log_;
    const std::shared_ptr<Link> link_;
};

} // namespace Fakes
