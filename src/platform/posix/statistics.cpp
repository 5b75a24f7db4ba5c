#include "interfaces/release_ptr.h"
#include "interfaces/statistics/posix/statistics_client.h"
#include "platform/posix/concerns.h"

#include <dlfcn.h>

#include <utility>

namespace Platform
{

namespace
{

using StatisticsModule::IStatisticsClient;
using StatisticsModule::IStatisticsClientFactory;

constexpr std::uint32_t InProcess = 1;                  // CLSCTX_INPROC_SERVER
constexpr StatisticsResult NotRegistered = -2147221164; // REGDB_E_CLASSNOTREG
constexpr StatisticsResult NullPointer = -2147467261;   // E_POINTER

/// The module, loaded for as long as somebody has an object of it.
using Module = std::shared_ptr<void>;

class PosixStatisticsClient : public StatisticsClient
{
public:
    PosixStatisticsClient(Module module, ReleasePtr<IStatisticsClient> client)
        : module_(std::move(module)), client_(std::move(client))
    {
    }

    StatisticsResult setUserId(const std::wstring& id) override { return client_->SetUserId(id.c_str()); }
    StatisticsResult setClientId(const std::wstring& id) override { return client_->SetClientId(id.c_str()); }
    StatisticsResult setDimension(std::int32_t index, const std::wstring& text) override
    {
        return client_->SetDimension(index, text.c_str());
    }
    StatisticsResult sendView(const std::wstring& path, const std::wstring& title) override
    {
        return client_->SendView(path.c_str(), title.c_str());
    }
    StatisticsResult sendViewEvent(const std::wstring& path, const std::wstring& action, const std::wstring& label,
                                   std::int64_t value) override
    {
        return client_->SendViewEvent(path.c_str(), action.c_str(), label.c_str(), value);
    }
    StatisticsResult sendEvent(const std::wstring& path, const std::wstring& category, const std::wstring& action,
                               const std::wstring& label, std::int64_t value) override
    {
        return client_->SendEvent(path.c_str(), category.c_str(), action.c_str(), label.c_str(), value);
    }
    StatisticsResult flush() override { return client_->Flush(); }

private:
    const Module module_; // goes behind the client
    const ReleasePtr<IStatisticsClient> client_;
};

class PosixStatisticsFactory : public StatisticsFactory
{
public:
    PosixStatisticsFactory(Module module, ReleasePtr<IStatisticsClientFactory> factory)
        : module_(std::move(module)), factory_(std::move(factory))
    {
    }

    StatisticsResult createClient(std::int32_t kind, const std::wstring& endpoint, const std::wstring& site,
                                  const std::wstring& tag, std::unique_ptr<StatisticsClient>& client) override
    {
        IStatisticsClient* made = nullptr;
        const StatisticsResult result =
            factory_->CreateClient(kind, endpoint.c_str(), site.c_str(), tag.c_str(), &made);
        ReleasePtr<IStatisticsClient> owned(made);
        if (result < 0)
            return result;
        if (!owned)
            return NullPointer;
        client = std::make_unique<PosixStatisticsClient>(module_, std::move(owned));
        return result;
    }

private:
    const Module module_;
    const ReleasePtr<IStatisticsClientFactory> factory_;
};

/// The module beside the program, and no other. Null when there is none.
Module loadModule()
{
    const std::wstring program = posixModules().fileName(nullptr);
    const std::wstring folder = program.substr(0, program.rfind(L'/') + 1);
    const std::wstring file = folder + posixModules().moduleFileName(L"statistics");
    // A client may be the last thing that goes as the process ends, behind the objects of this layer.
    return Module(posixModules().load(file),
                  [](void* module)
                  {
                      if (module)
                          dlclose(module);
                  });
}

class PosixStatistics : public Statistics
{
public:
    StatisticsResult createFactory(std::uint32_t context, std::unique_ptr<StatisticsFactory>& factory) override
    {
        const Module module = (context & InProcess) != 0 ? loadModule() : nullptr;
        const auto create = reinterpret_cast<StatisticsModule::CreateStatisticsFactoryFunction>(
            posixModules().findExport(module.get(), StatisticsModule::CreateStatisticsFactoryName));
        if (!create)
            return NotRegistered;
        IStatisticsClientFactory* made = nullptr;
        const StatisticsResult result = create(&made);
        ReleasePtr<IStatisticsClientFactory> owned(made);
        if (result < 0)
            return result;
        if (!owned)
            return NullPointer;
        factory = std::make_unique<PosixStatisticsFactory>(module, std::move(owned));
        return result;
    }
};

} // namespace

Statistics& posixStatistics()
{
    static PosixStatistics concern;
    return concern;
}

} // namespace Platform
