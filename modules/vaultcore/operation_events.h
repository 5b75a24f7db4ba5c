#pragma once

#include "interfaces/vaultcore/events.h"

namespace VaultCore
{

/// The callbacks of one job; a null one is left out.
struct EventReceivers
{
    IFileListBuilderEvents* fileList = nullptr;
    IOverallProgressEvents* overall = nullptr;
    IFileProgressEvents* progress = nullptr;
    IFileProgressEvents* destiny = nullptr;
    IFileConflictEvents* conflict = nullptr;
};

/// How the engine reads what a collector was given.
class IEventSource
{
public:
    virtual EventReceivers receivers() const = 0;

protected:
    ~IEventSource() = default;
};

/// One collector for both interfaces, which share their first six slots.
template <class Interface> class EventCollector : public Interface, public IEventSource
{
public:
    virtual ~EventCollector() = default;
    void Release() override { delete this; }
    void SetFileListBuilderEvents(IFileListBuilderEvents* events) override { receivers_.fileList = events; }
    void SetOverallProgressEvents(IOverallProgressEvents* events) override { receivers_.overall = events; }
    void SetFileProgressEvents(IFileProgressEvents* events) override { receivers_.progress = events; }
    void SetDestinyProgressEvents(IFileProgressEvents* events) override { receivers_.destiny = events; }
    void SetFileConflictEvents(IFileConflictEvents* events) override { receivers_.conflict = events; }
    EventReceivers receivers() const override { return receivers_; }

private:
    EventReceivers receivers_;
};

using OperationEvents = EventCollector<IOperationEvents>;

class DecryptionEvents final : public EventCollector<IDecryptionEvents>
{
public:
    void SetPasswordProvider(IPasswordProvider* provider) override { provider_ = provider; }
    IPasswordProvider* passwordProvider() const { return provider_; }

private:
    IPasswordProvider* provider_ = nullptr;
};

} // namespace VaultCore
