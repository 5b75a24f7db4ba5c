#include "platform/posix/concerns.h"
#include "platform/posix/registry_store.h"

namespace Platform
{

Registry& posixRegistry()
{
    static RegistryStore store(userSettingsFolder);
    static RegistryOnTree registry(store);
    return registry;
}

} // namespace Platform
