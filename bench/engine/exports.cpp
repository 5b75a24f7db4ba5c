#include "engine/timed_engine.h"
#include "vaultcore/crypto_library.h"
#include "vaultcore/factory.h"

// The engine's module with a clock in it.

#define EXPORTED extern "C" __attribute__((visibility("default")))

EXPORTED int initialize()
{
    return VaultCore::prepareCryptoLibrary() ? 1 : 0;
}

EXPORTED VaultCore::IFactory* createFactory()
{
    return Benchmarks::timed(new VaultCore::Factory);
}

EXPORTED void uninitialize() {}
