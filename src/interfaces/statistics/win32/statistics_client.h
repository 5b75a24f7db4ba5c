#pragma once

#include "interfaces/statistics/identifiers.h"

#include <unknwn.h>

#include <cstring>

// The statistics component as COM has it. The caller keeps its texts; a null text is an empty one. Every operation may
// be called on any thread of the multithreaded apartment.

namespace StatisticsModule
{

struct IStatisticsClient : IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE NotCalled1() = 0;
    virtual HRESULT STDMETHODCALLTYPE SetUserId(BSTR id) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetClientId(BSTR id) = 0;
    /// A custom dimension that later sends carry.
    virtual HRESULT STDMETHODCALLTYPE SetDimension(LONG index, BSTR text) = 0;
    virtual HRESULT STDMETHODCALLTYPE SendView(BSTR path, BSTR title) = 0;
    virtual HRESULT STDMETHODCALLTYPE SendViewEvent(BSTR path, BSTR action, BSTR label, LONGLONG value) = 0;
    virtual HRESULT STDMETHODCALLTYPE SendEvent(BSTR path, BSTR category, BSTR action, BSTR label, LONGLONG value) = 0;
    /// Asks for the delivery of what the client holds.
    virtual HRESULT STDMETHODCALLTYPE Flush() = 0;
};

struct IStatisticsClientFactory : IUnknown
{
    /// A new client, owned by the caller, in `client`; null on failure.
    virtual HRESULT STDMETHODCALLTYPE CreateClient(LONG kind, BSTR endpoint, BSTR site, BSTR tag,
                                                   IStatisticsClient** client) = 0;
};

inline GUID guidOf(const Identifier& identifier)
{
    static_assert(sizeof(GUID) == sizeof(Identifier));
    GUID guid = {};
    std::memcpy(&guid, &identifier, sizeof(guid));
    return guid;
}

} // namespace StatisticsModule
