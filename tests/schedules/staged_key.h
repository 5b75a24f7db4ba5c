#pragma once

#include "interfaces/vaultcore/key.h"
#include "schedules/record.h"

#include <utility>

namespace Schedules
{

/// An object that the engine gives out, counted until it is released.
template <class Interface> class EngineObject : public Interface
{
public:
    explicit EngineObject(Record& record) : record_(record) { ++record_.liveObjects; }

    void Release() override
    {
        --record_.liveObjects;
        delete this;
    }

protected:
    virtual ~EngineObject() = default;

private:
    Record& record_;
};

class StagedKey final : public EngineObject<VaultCore::IKey>
{
public:
    StagedKey(Record& record, std::wstring password) : EngineObject(record), password_(std::move(password)) {}
    void notCalled1() override {}
    int GetKeyType() override { return 0; }
    const std::wstring& password() const { return password_; }

private:
    const std::wstring password_;
};

} // namespace Schedules
