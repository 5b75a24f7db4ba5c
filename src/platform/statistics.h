#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace Platform
{

/// `HRESULT`: negative for a failure.
using StatisticsResult = std::int32_t;

/// The client that usage is reported to, a component of its own. Destroying it releases it. Safe on any thread.
class StatisticsClient
{
public:
    virtual ~StatisticsClient() = default;
    virtual StatisticsResult setUserId(const std::wstring& id) = 0;
    virtual StatisticsResult setClientId(const std::wstring& id) = 0;
    /// A custom dimension that later sends carry.
    virtual StatisticsResult setDimension(std::int32_t index, const std::wstring& text) = 0;
    virtual StatisticsResult sendView(const std::wstring& path, const std::wstring& title) = 0;
    virtual StatisticsResult sendViewEvent(const std::wstring& path, const std::wstring& action,
                                           const std::wstring& label, std::int64_t value) = 0;
    virtual StatisticsResult sendEvent(const std::wstring& path, const std::wstring& category,
                                       const std::wstring& action, const std::wstring& label, std::int64_t value) = 0;
    /// Asks for the delivery of what the client holds.
    virtual StatisticsResult flush() = 0;
};

/// What makes clients. Destroying it releases it; its clients live on.
class StatisticsFactory
{
public:
    virtual ~StatisticsFactory() = default;
    /// `IStatisticsClientFactory::CreateClient`. `client` is set on success alone.
    virtual StatisticsResult createClient(std::int32_t kind, const std::wstring& endpoint, const std::wstring& site,
                                          const std::wstring& tag, std::unique_ptr<StatisticsClient>& client) = 0;
};

/// The way to the component.
class Statistics
{
public:
    virtual ~Statistics() = default;
    /// `CoCreateInstance` of the factory's class without aggregation, in the contexts of the bits of `context`.
    /// `factory` is set on success alone; a missing component is a failure.
    virtual StatisticsResult createFactory(std::uint32_t context, std::unique_ptr<StatisticsFactory>& factory) = 0;
};

} // namespace Platform
