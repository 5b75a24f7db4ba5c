#pragma once

#include "fakes/fake_engine.h"

#include <functional>

namespace Benchmarks
{

/// Runs a wipe job to its end: the real first thread with its message window, job thread, command, bridges, controller
/// and view, on the real system. Only the modules are in memory, the question of the job is answered with yes, and the
/// file error dialog answers "skip" at once, without a window.
/// `work` is the engine's work, on the engine's thread. First thread.
void runJob(std::function<void(const Fakes::EngineCallbacks&)> work);

} // namespace Benchmarks
