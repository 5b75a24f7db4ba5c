#include "commands/command.h"

#include <utility>

namespace JobRunner
{

Command::Command(ReleasePtr<ZelPlatform::IJobRunnerDocument> document, IGuiEvents* gui)
    : document_(std::move(document)), gui_(gui)
{
}

} // namespace JobRunner
