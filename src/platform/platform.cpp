#include "platform/platform.h"

namespace Platform
{

namespace
{
System* replaced = nullptr;
}

System& platform()
{
    return replaced ? *replaced : nativeSystem();
}

void setPlatform(System* system)
{
    replaced = system;
}

} // namespace Platform
