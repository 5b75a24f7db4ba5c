#include "platform/posix/concerns.h"
#include "platform/thread_messages.h"

namespace Platform
{

Messages& posixMessages()
{
    static ThreadMessages messages;
    return messages;
}

} // namespace Platform
