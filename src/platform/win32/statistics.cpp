#include "interfaces/statistics/win32/statistics_client.h"
#include "platform/win32/concerns.h"

#include <objbase.h>
#include <oleauto.h>

#include <utility>

namespace Platform
{

namespace
{

using StatisticsModule::IStatisticsClient;
using StatisticsModule::IStatisticsClientFactory;

/// Owns a reference to a COM object.
template <class Interface> class ComPtr
{
public:
    ComPtr() = default;
    explicit ComPtr(Interface* object) : object_(object) {}
    ComPtr(ComPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    ComPtr& operator=(ComPtr&&) = delete;
    ~ComPtr()
    {
        // Null first: whoever looks at this from within the release finds nothing.
        if (Interface* const object = std::exchange(object_, nullptr))
            object->Release();
    }

    Interface* operator->() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }

private:
    Interface* object_ = nullptr;
};

/// A text of COM: all of the characters, nulls in it as well.
class ComText
{
public:
    explicit ComText(const std::wstring& text) : text_(SysAllocStringLen(text.c_str(), static_cast<UINT>(text.size())))
    {
    }
    ~ComText() { SysFreeString(text_); }
    ComText(const ComText&) = delete;
    ComText& operator=(const ComText&) = delete;

    BSTR get() const { return text_; }

private:
    const BSTR text_;
};

/// Calls `operation` unless the memory for one of the texts is missing: a null text would be another text.
template <class Operation, class... Texts> HRESULT withTexts(Operation operation, const Texts&... texts)
{
    const bool whole = ((texts.get() != nullptr) && ...);
    return whole ? operation(texts.get()...) : E_OUTOFMEMORY;
}

class Win32StatisticsClient : public StatisticsClient
{
public:
    explicit Win32StatisticsClient(ComPtr<IStatisticsClient> client) : client_(std::move(client)) {}

    StatisticsResult setUserId(const std::wstring& id) override
    {
        return withTexts([this](BSTR text) { return client_->SetUserId(text); }, ComText(id));
    }
    StatisticsResult setClientId(const std::wstring& id) override
    {
        return withTexts([this](BSTR text) { return client_->SetClientId(text); }, ComText(id));
    }
    StatisticsResult setDimension(std::int32_t index, const std::wstring& text) override
    {
        return withTexts([&](BSTR whole) { return client_->SetDimension(index, whole); }, ComText(text));
    }
    StatisticsResult sendView(const std::wstring& path, const std::wstring& title) override
    {
        return withTexts([this](auto... texts) { return client_->SendView(texts...); }, ComText(path), ComText(title));
    }
    StatisticsResult sendViewEvent(const std::wstring& path, const std::wstring& action, const std::wstring& label,
                                   std::int64_t value) override
    {
        return withTexts([&](auto... texts) { return client_->SendViewEvent(texts..., value); }, ComText(path),
                         ComText(action), ComText(label));
    }
    StatisticsResult sendEvent(const std::wstring& path, const std::wstring& category, const std::wstring& action,
                               const std::wstring& label, std::int64_t value) override
    {
        return withTexts([&](auto... texts) { return client_->SendEvent(texts..., value); }, ComText(path),
                         ComText(category), ComText(action), ComText(label));
    }
    StatisticsResult flush() override { return client_->Flush(); }

private:
    const ComPtr<IStatisticsClient> client_;
};

class Win32StatisticsFactory : public StatisticsFactory
{
public:
    explicit Win32StatisticsFactory(ComPtr<IStatisticsClientFactory> factory) : factory_(std::move(factory)) {}

    StatisticsResult createClient(std::int32_t kind, const std::wstring& endpoint, const std::wstring& site,
                                  const std::wstring& tag, std::unique_ptr<StatisticsClient>& client) override
    {
        IStatisticsClient* made = nullptr;
        const HRESULT result = withTexts([&](auto... texts) { return factory_->CreateClient(kind, texts..., &made); },
                                         ComText(endpoint), ComText(site), ComText(tag));
        ComPtr<IStatisticsClient> owned(made);
        if (FAILED(result))
            return result;
        if (!owned)
            return E_POINTER;
        client = std::make_unique<Win32StatisticsClient>(std::move(owned));
        return result;
    }

private:
    const ComPtr<IStatisticsClientFactory> factory_;
};

class Win32Statistics : public Statistics
{
public:
    StatisticsResult createFactory(std::uint32_t context, std::unique_ptr<StatisticsFactory>& factory) override
    {
        void* made = nullptr;
        const HRESULT result =
            CoCreateInstance(StatisticsModule::guidOf(StatisticsModule::FactoryClass), nullptr, context,
                             StatisticsModule::guidOf(StatisticsModule::FactoryInterface), &made);
        if (FAILED(result))
            return result;
        factory = std::make_unique<Win32StatisticsFactory>(
            ComPtr<IStatisticsClientFactory>(static_cast<IStatisticsClientFactory*>(made)));
        return result;
    }
};

} // namespace

Statistics& win32Statistics()
{
    static Win32Statistics concern;
    return concern;
}

} // namespace Platform
