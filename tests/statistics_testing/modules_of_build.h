#pragma once

#include "statistics_testing/installed_component.h"

namespace StatisticsTesting
{

/// Path of the running test program.
std::filesystem::path ownProgram();

/// The file of a component in this build: the shipped one, the misbehaving one, or one that is not there.
std::filesystem::path moduleOf(Component component);
/// What the misbehaving component is told in the environment; null for nothing.
const char* faultOf(Component component);
inline constexpr const char* FaultVariable = "JOBRUNNER_STATISTICS_FAULT";

} // namespace StatisticsTesting
