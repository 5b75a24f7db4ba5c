#pragma once

#include "platform/testing_registry.h"
#include "systemutilities/registry/i_registry_key.h"
#include "systemutilities/registry/testing_failure.h"

#include <memory>
#include <string>

namespace Halden::SystemUtilities::Registry
{

/// A key that does not exist at first, in the registry of each system.
class EachRegistryKey : public EachRegistry
{
protected:
    void SetUp() override
    {
        EachRegistry::SetUp();
        key_ = makeKey();
    }
    void TearDown() override
    {
        key_.reset();
        EachRegistry::TearDown();
    }

    /// The object of a key, or of one below it.
    std::unique_ptr<IRegistryKey> makeKey(const std::wstring& subKey = {})
    {
        const std::wstring path = path_ + L"\\key";
        return CreateRegistryKey(Platform::CurrentUser, subKey.empty() ? path : path + L'\\' + subKey, false);
    }

    std::unique_ptr<IRegistryKey> key_;
};

} // namespace Halden::SystemUtilities::Registry
