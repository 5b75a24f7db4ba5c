#include "statistics/win32/statistics_client.h"

#include <oleauto.h>

#include <new>
#include <utility>

namespace StatisticsModule
{
namespace
{

/// All of the text, nulls in it as well. A null text is an empty one.
std::wstring_view textOf(BSTR text)
{
    return std::wstring_view(text ? text : L"", SysStringLen(text));
}

} // namespace

StatisticsClient::StatisticsClient(std::shared_ptr<Recorder> recorder) : recorder_(std::move(recorder)) {}

HRESULT StatisticsClient::SetUserId(BSTR id)
{
    return record(*recorder_, "SetUserId", {textOf(id)});
}

HRESULT StatisticsClient::SetClientId(BSTR id)
{
    return record(*recorder_, "SetClientId", {textOf(id)});
}

HRESULT StatisticsClient::SetDimension(LONG index, BSTR text)
{
    return record(*recorder_, "SetDimension", {index, textOf(text)});
}

HRESULT StatisticsClient::SendView(BSTR path, BSTR title)
{
    return record(*recorder_, "SendView", {textOf(path), textOf(title)});
}

HRESULT StatisticsClient::SendViewEvent(BSTR path, BSTR action, BSTR label, LONGLONG value)
{
    return record(*recorder_, "SendViewEvent", {textOf(path), textOf(action), textOf(label), valueOf(value)});
}

HRESULT StatisticsClient::SendEvent(BSTR path, BSTR category, BSTR action, BSTR label, LONGLONG value)
{
    return record(*recorder_, "SendEvent",
                  {textOf(path), textOf(category), textOf(action), textOf(label), valueOf(value)});
}

HRESULT StatisticsClient::Flush()
{
    return record(*recorder_, "Flush", {});
}

StatisticsClientFactory::StatisticsClientFactory(std::shared_ptr<Recorder> recorder) : recorder_(std::move(recorder)) {}

HRESULT StatisticsClientFactory::CreateClient(LONG kind, BSTR endpoint, BSTR site, BSTR tag, IStatisticsClient** client)
{
    if (!client)
        return E_POINTER;
    *client = nullptr;
    if (kind != OnlyClientKind)
        return E_INVALIDARG;
    const HRESULT result = record(*recorder_, "CreateClient", {kind, textOf(endpoint), textOf(site), textOf(tag)});
    if (FAILED(result))
        return result;
    *client = new (std::nothrow) StatisticsClient(recorder_);
    return *client ? S_OK : E_OUTOFMEMORY;
}

} // namespace StatisticsModule
