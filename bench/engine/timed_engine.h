#pragma once

#include "interfaces/vaultcore/factory.h"

namespace Benchmarks
{

/// A factory of the engine that measures each encryption and decryption: from the call that starts it until the last
/// event has been taken, without the time in which a key is being asked for. Each measure, in nanoseconds, becomes the
/// content of the file that the environment names as JOBRUNNER_ENGINE_TIME. Takes the factory over.
VaultCore::IFactory* timed(VaultCore::IFactory* engine);

} // namespace Benchmarks
