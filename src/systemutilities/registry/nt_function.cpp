#include "systemutilities/registry/nt_function.h"

#include "platform/platform.h"
#include "platform/processes.h"
#include "systemutilities/win32_exception.h"

namespace Halden::SystemUtilities::Registry
{

namespace
{

Platform::Processes& processes()
{
    return Platform::platform().processes;
}

} // namespace

void NtFunction::Unload::operator()(void* module) const
{
    processes().unloadModule(module);
}

NtFunction::NtFunction(const char* name, const char* notFound) : library_(processes().loadModule(L"ntdll.dll"))
{
    if (!library_)
        throw Win32Exception("Can't load ntdll.dll.");
    address_ = processes().findFunction(library_.get(), name);
    if (!address_)
        throw Win32Exception(notFound);
}

} // namespace Halden::SystemUtilities::Registry
