#include "vaultcore/crypto_library.h"
#include "vaultcore/factory.h"

#if defined(_WIN32)
#define VAULTCORE_EXPORT extern "C" __declspec(dllexport)
#else
#define VAULTCORE_EXPORT extern "C" __attribute__((visibility("default")))
#endif

/// Called once before anything else. Not 0 when the engine can be used.
VAULTCORE_EXPORT int initialize()
{
    return VaultCore::prepareCryptoLibrary() ? 1 : 0;
}

/// A new factory on each call, owned by the caller.
VAULTCORE_EXPORT VaultCore::IFactory* createFactory()
{
    return new VaultCore::Factory;
}

/// Called once after the last object is released. libgcrypt needs no farewell.
VAULTCORE_EXPORT void uninitialize() {}
