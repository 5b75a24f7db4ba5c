#pragma once

#include "schedules/choices.h"
#include "schedules/job_plan.h"

#include <string>

namespace Schedules
{

/// Runs a whole job, from its document to the end of the message loop, in the schedule of the choices. What was wrong;
/// empty when nothing was.
std::string runJob(const JobPlan& plan, Choices& choices);

/// The same with threads that run freely, on the calling thread as the first one.
std::string runJobFreely(const JobPlan& plan);

} // namespace Schedules
