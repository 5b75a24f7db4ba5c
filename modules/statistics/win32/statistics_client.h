#pragma once

#include "interfaces/statistics/win32/statistics_client.h"
#include "statistics/recorder.h"
#include "statistics/win32/counted.h"

#include <memory>

namespace StatisticsModule
{

/// Hands every call to the recorder. Its interface has no identifier of its own.
class StatisticsClient final : public Counted<IStatisticsClient>
{
public:
    explicit StatisticsClient(std::shared_ptr<Recorder> recorder);

    HRESULT STDMETHODCALLTYPE NotCalled1() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetUserId(BSTR id) override;
    HRESULT STDMETHODCALLTYPE SetClientId(BSTR id) override;
    HRESULT STDMETHODCALLTYPE SetDimension(LONG index, BSTR text) override;
    HRESULT STDMETHODCALLTYPE SendView(BSTR path, BSTR title) override;
    HRESULT STDMETHODCALLTYPE SendViewEvent(BSTR path, BSTR action, BSTR label, LONGLONG value) override;
    HRESULT STDMETHODCALLTYPE SendEvent(BSTR path, BSTR category, BSTR action, BSTR label, LONGLONG value) override;
    HRESULT STDMETHODCALLTYPE Flush() override;

protected:
    bool hasInterface(REFIID) const override { return false; }

private:
    const std::shared_ptr<Recorder> recorder_;
};

class StatisticsClientFactory final : public Counted<IStatisticsClientFactory>
{
public:
    explicit StatisticsClientFactory(std::shared_ptr<Recorder> recorder);

    HRESULT STDMETHODCALLTYPE CreateClient(LONG kind, BSTR endpoint, BSTR site, BSTR tag,
                                           IStatisticsClient** client) override;

protected:
    bool hasInterface(REFIID id) const override { return IsEqualIID(id, guidOf(FactoryInterface)); }

private:
    const std::shared_ptr<Recorder> recorder_;
};

} // namespace StatisticsModule
