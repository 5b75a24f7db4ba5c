#pragma once

#include "statistics/recorder.h"

namespace EndToEnd
{

/// The journal of this user, but for what the variable JOBRUNNER_STATISTICS_FAULT of the environment asks for:
/// "refuse" makes the creation of every client fail, "fail" every call of a client, and "hang" makes each of those
/// take a second.
std::shared_ptr<StatisticsModule::Recorder> createMisbehavingRecorder();

} // namespace EndToEnd
