#pragma once

#include "interfaces/zelplatform/documents.h"
#include "zelplatform/job_description.h"
#include "zelplatform/sfx_comment.h"

namespace ZelPlatform
{

/// A document that has the interface of the job's kind and of no other; owned by the caller.
IJobRunnerDocument* createDocument(JobDescription job, SfxComment userComment);

} // namespace ZelPlatform
