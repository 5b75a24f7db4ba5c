#pragma once

#include "interfaces/release_ptr.h"
#include "interfaces/vaultcore/factory.h"
#include "interfaces/zelplatform/factory.h"

namespace JobRunner
{

/// The two `createFactory` entry points of the closed modules. Set on the first thread before the job thread
/// starts (null takes one away), and read without a lock from any thread afterwards.
void setVaultCoreFactory(VaultCore::CreateFactoryFunction createFactory);
void setZelPlatformFactory(ZelPlatform::CreateFactoryFunction createFactory);

/// A new factory on each call. The entry point has to be set.
ReleasePtr<VaultCore::IFactory> createVaultCoreFactory();
ReleasePtr<ZelPlatform::IFactory> createZelPlatformFactory();

} // namespace JobRunner
