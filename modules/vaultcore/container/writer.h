#pragma once

#include "vaultcore/container/container.h"
#include "vaultcore/container/derivation.h"

namespace VaultCore
{

/// How the containers of a session are made.
struct WritingParameters
{
    Argon2Parameters argon2 = UsualArgon2;
    /// Measured: smaller chunks cost more calls, larger ones no longer fit the processor's cache.
    std::uint32_t chunkSize = 256 * 1024;
};

/// What `startEncryption` takes. Tests put cheaper ones in their place, before any thread uses them.
WritingParameters& usualParameters();

/// `startEncryption` with other parameters.
std::unique_ptr<EncryptionSession> startEncryptionWith(const Key& key, std::uint32_t algorithm,
                                                       const WritingParameters& parameters);

} // namespace VaultCore
