#include "platform/testing_registry.h"

#include "platform/posix/testing_settings.h"

std::shared_ptr<void> ownNativeRegistry()
{
    return std::make_shared<OwnSettings>();
}
