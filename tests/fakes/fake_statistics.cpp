#include "fakes/fake_statistics.h"

namespace Fakes
{

namespace
{

constexpr std::int32_t OnlyKind = 1;
constexpr std::uint32_t InProcess = 1;

} // namespace

class FakeStatistics::Client : public Platform::StatisticsClient
{
public:
    explicit Client(std::shared_ptr<Link> link) : link_(std::move(link)) {}
    ~Client() override { call(L"ReleaseClient", L""); }
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    Platform::StatisticsResult setUserId(const std::wstring& id) override { return call(L"SetUserId", id); }
    Platform::StatisticsResult setClientId(const std::wstring& id) override { return call(L"SetClientId", id); }
    Platform::StatisticsResult setDimension(std::int32_t index, const std::wstring& text) override
    {
        return call(L"SetDimension", std::to_wstring(index) + L", " + text);
    }
    Platform::StatisticsResult sendView(const std::wstring& path, const std::wstring& title) override
    {
        return call(L"SendView", path + L", " + title);
    }
    Platform::StatisticsResult sendViewEvent(const std::wstring& path, const std::wstring& action,
                                             const std::wstring& label, std::int64_t value) override
    {
        return call(L"SendViewEvent", path + L", " + action + L", " + label + L", " + std::to_wstring(value));
    }
    Platform::StatisticsResult sendEvent(const std::wstring& path, const std::wstring& category,
                                         const std::wstring& action, const std::wstring& label,
                                         std::int64_t value) override
    {
        return call(L"SendEvent",
                    path + L", " + category + L", " + action + L", " + label + L", " + std::to_wstring(value));
    }
    Platform::StatisticsResult flush() override { return call(L"Flush", L""); }

private:
    Platform::StatisticsResult call(const std::wstring& operation, const std::wstring& arguments)
    {
        return link_->owner ? link_->owner->call(operation, arguments, link_->owner->clientResult) : 0;
    }

    const std::shared_ptr<Link> link_;
};

class FakeStatistics::Factory : public Platform::StatisticsFactory
{
public:
    explicit Factory(std::shared_ptr<Link> link) : link_(std::move(link)) {}
    ~Factory() override
    {
        if (link_->owner)
            link_->owner->call(L"ReleaseFactory", L"", 0);
    }
    Factory(const Factory&) = delete;
    Factory& operator=(const Factory&) = delete;

    Platform::StatisticsResult createClient(std::int32_t kind, const std::wstring& endpoint, const std::wstring& site,
                                            const std::wstring& tag,
                                            std::unique_ptr<Platform::StatisticsClient>& client) override
    {
        if (!link_->owner)
            return Failure;
        const std::wstring arguments = std::to_wstring(kind) + L", " + endpoint + L", " + site + L", " + tag;
        const Platform::StatisticsResult result =
            link_->owner->call(L"CreateClient", arguments, kind == OnlyKind ? 0 : InvalidArgument);
        if (result >= 0)
            client = std::make_unique<Client>(link_);
        return result;
    }

private:
    const std::shared_ptr<Link> link_;
};

FakeStatistics::FakeStatistics(CallLog& log) : log_(log), link_(std::make_shared<Link>())
{
    link_->owner = this;
}

FakeStatistics::~FakeStatistics()
{
    link_->owner = nullptr;
}

Platform::StatisticsResult FakeStatistics::createFactory(std::uint32_t context,
                                                         std::unique_ptr<Platform::StatisticsFactory>& factory)
{
    const bool isFound = installed && (context & InProcess) != 0;
    const Platform::StatisticsResult result =
        call(L"CoCreateInstance", std::to_wstring(context), isFound ? 0 : NotRegistered);
    if (result >= 0)
        factory = std::make_unique<Factory>(link_);
    return result;
}

Platform::StatisticsResult FakeStatistics::call(const std::wstring& operation, const std::wstring& arguments,
                                                Platform::StatisticsResult otherwise)
{
    const std::wstring text = L"statistics." + operation + L"(" + arguments + L")";
    log_.add(text);
    if (onCall)
        onCall(text);
    const auto told = results.find(operation);
    return told == results.end() ? otherwise : told->second;
}

} // namespace Fakes
