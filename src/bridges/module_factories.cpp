#include "bridges/module_factories.h"

namespace JobRunner
{

namespace
{
VaultCore::CreateFactoryFunction vaultCoreFactory = nullptr;
ZelPlatform::CreateFactoryFunction zelPlatformFactory = nullptr;
} // namespace

void setVaultCoreFactory(VaultCore::CreateFactoryFunction createFactory)
{
    vaultCoreFactory = createFactory;
}

void setZelPlatformFactory(ZelPlatform::CreateFactoryFunction createFactory)
{
    zelPlatformFactory = createFactory;
}

ReleasePtr<VaultCore::IFactory> createVaultCoreFactory()
{
    return ReleasePtr<VaultCore::IFactory>(vaultCoreFactory());
}

ReleasePtr<ZelPlatform::IFactory> createZelPlatformFactory()
{
    return ReleasePtr<ZelPlatform::IFactory>(zelPlatformFactory());
}

} // namespace JobRunner
