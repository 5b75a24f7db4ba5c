#pragma once

#include "interfaces/statistics/identifiers.h"

#include <cstdint>

// The statistics component as a module of its own, which may be missing. Results are negative for a failure. The caller
// keeps its texts; a null text is an empty one. Every operation may be called on any thread, and none throws.

namespace StatisticsModule
{

class IStatisticsClient
{
public:
    /// Both give the number of references that are left.
    virtual std::uint32_t AddRef() = 0;
    virtual std::uint32_t Release() = 0;
    virtual std::int32_t NotCalled1() = 0;
    virtual std::int32_t SetUserId(const wchar_t* id) = 0;
    virtual std::int32_t SetClientId(const wchar_t* id) = 0;
    /// A custom dimension that later sends carry.
    virtual std::int32_t SetDimension(std::int32_t index, const wchar_t* text) = 0;
    virtual std::int32_t SendView(const wchar_t* path, const wchar_t* title) = 0;
    virtual std::int32_t SendViewEvent(const wchar_t* path, const wchar_t* action, const wchar_t* label,
                                       std::int64_t value) = 0;
    virtual std::int32_t SendEvent(const wchar_t* path, const wchar_t* category, const wchar_t* action,
                                   const wchar_t* label, std::int64_t value) = 0;
    /// Asks for the delivery of what the client holds.
    virtual std::int32_t Flush() = 0;

protected:
    ~IStatisticsClient() = default;
};

class IStatisticsClientFactory
{
public:
    virtual std::uint32_t AddRef() = 0;
    virtual std::uint32_t Release() = 0;
    /// A new client, owned by the caller, in `client`; null on failure.
    virtual std::int32_t CreateClient(std::int32_t kind, const wchar_t* endpoint, const wchar_t* site,
                                      const wchar_t* tag, IStatisticsClient** client) = 0;

protected:
    ~IStatisticsClientFactory() = default;
};

/// Type of the module's one export: a new factory, owned by the caller, in `factory`; null on failure.
using CreateStatisticsFactoryFunction = std::int32_t (*)(IStatisticsClientFactory** factory);
inline constexpr const char* CreateStatisticsFactoryName = "createStatisticsFactory";

} // namespace StatisticsModule
