#include "platform/posix/process_object.h"

#include "platform/posix/family.h"

#include <poll.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Platform
{

namespace
{

/// Not every version of the C library has a function for this that C++ can call.
int openProcessDescriptor(std::uint32_t id)
{
    return static_cast<int>(syscall(SYS_pidfd_open, static_cast<pid_t>(id), 0));
}

bool isSignalled(int descriptor)
{
    pollfd looked{descriptor, POLLIN, 0};
    return poll(&looked, 1, 0) > 0;
}

} // namespace

void takeNoticeOfEnd(std::uint32_t process)
{
    // A child of other parts of this program is left to them.
    const auto record = processRecord(process);
    if (record && record->hasEnded && family().contains(*record))
        waitpid(static_cast<pid_t>(process), nullptr, WNOHANG);
}

std::shared_ptr<ProcessObject> ProcessObject::ofChild(std::uint32_t id)
{
    // The constructor is private; the pointer owns the object at once.
    return std::shared_ptr<ProcessObject>(new ProcessObject(id, Descriptor(openProcessDescriptor(id))));
}

std::shared_ptr<ProcessObject> ProcessObject::open(std::uint32_t id)
{
    auto object = ofChild(id);
    if (object->descriptor_ && !isSignalled(object->descriptor()))
        return object;
    // Whoever looks for an ended process has seen that it ended.
    object->onSignalled();
    return nullptr;
}

void ProcessObject::onSignalled()
{
    family().onEndSeen(id_, processTicks());
    takeNoticeOfEnd(id_);
}

} // namespace Platform
