#include "statistics/posix/statistics_client.h"

#include <new>
#include <utility>

namespace StatisticsModule
{
namespace
{

std::wstring_view textOf(const wchar_t* text)
{
    return text ? text : L"";
}

} // namespace

StatisticsClient::StatisticsClient(std::shared_ptr<Recorder> recorder) : recorder_(std::move(recorder)) {}

std::int32_t StatisticsClient::SetUserId(const wchar_t* id)
{
    return record(*recorder_, "SetUserId", {textOf(id)});
}

std::int32_t StatisticsClient::SetClientId(const wchar_t* id)
{
    return record(*recorder_, "SetClientId", {textOf(id)});
}

std::int32_t StatisticsClient::SetDimension(std::int32_t index, const wchar_t* text)
{
    return record(*recorder_, "SetDimension", {index, textOf(text)});
}

std::int32_t StatisticsClient::SendView(const wchar_t* path, const wchar_t* title)
{
    return record(*recorder_, "SendView", {textOf(path), textOf(title)});
}

std::int32_t StatisticsClient::SendViewEvent(const wchar_t* path, const wchar_t* action, const wchar_t* label,
                                             std::int64_t value)
{
    return record(*recorder_, "SendViewEvent", {textOf(path), textOf(action), textOf(label), valueOf(value)});
}

std::int32_t StatisticsClient::SendEvent(const wchar_t* path, const wchar_t* category, const wchar_t* action,
                                         const wchar_t* label, std::int64_t value)
{
    return record(*recorder_, "SendEvent",
                  {textOf(path), textOf(category), textOf(action), textOf(label), valueOf(value)});
}

std::int32_t StatisticsClient::Flush()
{
    return record(*recorder_, "Flush", {});
}

StatisticsClientFactory::StatisticsClientFactory(std::shared_ptr<Recorder> recorder) : recorder_(std::move(recorder)) {}

std::int32_t StatisticsClientFactory::CreateClient(std::int32_t kind, const wchar_t* endpoint, const wchar_t* site,
                                                   const wchar_t* tag, IStatisticsClient** client)
{
    if (!client)
        return NullPointer;
    *client = nullptr;
    if (kind != OnlyClientKind)
        return InvalidArgument;
    const Result result = record(*recorder_, "CreateClient", {kind, textOf(endpoint), textOf(site), textOf(tag)});
    if (result < 0)
        return result;
    *client = new (std::nothrow) StatisticsClient(recorder_);
    return *client ? Succeeded : OutOfMemory;
}

Result createFactory(IStatisticsClientFactory** factory, CreateRecorderFunction createRecorder) noexcept
{
    if (!factory)
        return NullPointer;
    *factory = nullptr;
    try
    {
        *factory = new StatisticsClientFactory(createRecorder());
        return Succeeded;
    }
    catch (...)
    {
        return OutOfMemory;
    }
}

} // namespace StatisticsModule
