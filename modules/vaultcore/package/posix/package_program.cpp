#include "vaultcore/package/package_program.h"

#include "platform/utf8.h"

#include <dlfcn.h>

namespace VaultCore
{

std::wstring packageProgram()
{
    Dl_info module = {};
    std::string path;
    if (::dladdr(reinterpret_cast<const void*>(&packageProgram), &module) != 0 && module.dli_fname != nullptr)
        path = module.dli_fname;
    return Platform::fromUtf8(path.substr(0, path.rfind('/') + 1) + "package.stub");
}

} // namespace VaultCore
