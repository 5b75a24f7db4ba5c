#pragma once

namespace Faults
{

/// Every step and many moments, or those of a short run? JOBRUNNER_FAULTS is "full" for the long one.
bool isFullRun();

} // namespace Faults
