#include "scenarios/wordless_engine.h"
#include "vaultcore/crypto_library.h"
#include "vaultcore/factory.h"

// The engine's module as one that tells no text at the end of a decrypted file.

#define EXPORTED extern "C" __attribute__((visibility("default")))

namespace
{

VaultCore::IFactory* createEngineFactory()
{
    return new VaultCore::Factory;
}

} // namespace

EXPORTED int initialize()
{
    return VaultCore::prepareCryptoLibrary() ? 1 : 0;
}

EXPORTED VaultCore::IFactory* createFactory()
{
    static const VaultCore::CreateFactoryFunction create = EndToEnd::withoutWords(&createEngineFactory);
    return create();
}

EXPORTED void uninitialize() {}
