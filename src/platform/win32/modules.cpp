#include "platform/win32/concerns.h"

#include <windows.h>

#include <array>

namespace Platform
{

namespace
{

constexpr DWORD FileNameLength = 1024;

/// Anything else would let the system's search order pick a module from a folder that others can write to.
bool isFullPath(const std::wstring& path)
{
    return path.starts_with(L"\\\\") || (path.size() > 2 && path[1] == L':' && path[2] == L'\\');
}

class Win32Modules : public Modules
{
public:
    ModuleHandle load(const std::wstring& fullPath) override
    {
        return isFullPath(fullPath) ? LoadLibraryW(fullPath.c_str()) : nullptr;
    }

    void* findExport(ModuleHandle module, const char* name) override
    {
        return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), name));
    }

    void unload(ModuleHandle module) override { FreeLibrary(static_cast<HMODULE>(module)); }

    std::wstring fileName(ModuleHandle module) override
    {
        std::array<wchar_t, FileNameLength> buffer{};
        const DWORD length = GetModuleFileNameW(static_cast<HMODULE>(module), buffer.data(), FileNameLength);
        // A name that was cut names another file.
        return length < FileNameLength ? std::wstring(buffer.data(), length) : std::wstring();
    }

    std::wstring moduleFileName(const std::wstring& name) override { return name + L".dll"; }
};

} // namespace

Modules& win32Modules()
{
    static Win32Modules modules;
    return modules;
}

} // namespace Platform
