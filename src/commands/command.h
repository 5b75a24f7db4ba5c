#pragma once

#include "interfaces/release_ptr.h"
#include "interfaces/zelplatform/documents.h"

namespace JobRunner
{

class IGuiEvents;

/// One job of the process: made on the first thread, run once on the job thread, destroyed on the first thread after
/// the job thread has ended. A step of the double-click job lives on the job thread alone.
class Command
{
public:
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;
    /// Releases the document, when there is one. Everything that the document gave out is valid until then.
    virtual ~Command() = default;

    /// The whole job. Job thread. What it throws ends the process.
    virtual void Run() = 0;

protected:
    /// `gui` is not owned.
    Command(ReleasePtr<ZelPlatform::IJobRunnerDocument> document, IGuiEvents* gui);

    ReleasePtr<ZelPlatform::IJobRunnerDocument> document_;
    IGuiEvents* gui_;
};

} // namespace JobRunner
