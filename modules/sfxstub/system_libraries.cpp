#include "sfxstub/system_libraries.h"

#include <string>

namespace SfxStub
{
namespace
{

constexpr DWORD FromSystemFolder = 0x800; // LOAD_LIBRARY_SEARCH_SYSTEM32

std::wstring systemFolder()
{
    wchar_t folder[MAX_PATH] = {};
    const UINT length = GetSystemDirectoryW(folder, MAX_PATH);
    return std::wstring(folder, length < MAX_PATH ? length : 0);
}

} // namespace

void keepForeignLibrariesOut()
{
    SetDllDirectoryW(L"");
    using SetDirectories = BOOL WINAPI(DWORD);
    // A Windows 7 without its updates does not have it; there the libraries are loaded by their whole path.
    const auto function = GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "SetDefaultDllDirectories");
    if (function == nullptr)
    {
        // libgcrypt asks for this one without a path, and then gets the one that is there already.
        loadSystemLibrary(L"netapi32.dll");
        return;
    }
    reinterpret_cast<SetDirectories*>(reinterpret_cast<void*>(function))(FromSystemFolder);
}

HMODULE loadSystemLibrary(const wchar_t* name)
{
    if (const HMODULE module = LoadLibraryExW(name, nullptr, FromSystemFolder))
        return module;
    const std::wstring folder = systemFolder();
    if (folder.empty())
        return nullptr;
    return LoadLibraryExW((folder + L'\\' + name).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

} // namespace SfxStub
