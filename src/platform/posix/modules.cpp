#include "platform/posix/concerns.h"
#include "platform/utf8.h"

#include <dlfcn.h>
#include <limits.h>
#include <link.h>
#include <unistd.h>

#include <array>

namespace Platform
{

namespace
{

constexpr std::size_t FileNameLength = 1024;

std::string programFileName()
{
    std::array<char, PATH_MAX> buffer{};
    const ssize_t length = readlink("/proc/self/exe", buffer.data(), buffer.size());
    return length > 0 ? std::string(buffer.data(), static_cast<std::size_t>(length)) : std::string();
}

std::string loadedFileName(ModuleHandle module)
{
    link_map* map = nullptr;
    return dlinfo(module, RTLD_DI_LINKMAP, &map) == 0 && map->l_name ? map->l_name : std::string();
}

class PosixModules : public Modules
{
public:
    ModuleHandle load(const std::wstring& fullPath) override
    {
        // Anything else would let the search order of the system pick a module from another folder.
        if (!fullPath.starts_with(L'/'))
            return nullptr;
        return dlopen(toUtf8(fullPath).c_str(), RTLD_NOW | RTLD_LOCAL);
    }

    void* findExport(ModuleHandle module, const char* name) override
    {
        // A null module would mean every module of the program.
        return module ? dlsym(module, name) : nullptr;
    }

    void unload(ModuleHandle module) override
    {
        if (module)
            dlclose(module);
    }

    std::wstring fileName(ModuleHandle module) override
    {
        std::wstring name = fromUtf8(module ? loadedFileName(module) : programFileName());
        // A name that was cut would name another file.
        return name.size() < FileNameLength ? name : std::wstring();
    }

    std::wstring moduleFileName(const std::wstring& name) override
    {
        // The views of the terminal need no controls.
        return name == L"panekit" ? std::wstring() : name + L".so";
    }
};

} // namespace

Modules& posixModules()
{
    static PosixModules modules;
    return modules;
}

} // namespace Platform
