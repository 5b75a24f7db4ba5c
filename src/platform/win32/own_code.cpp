#include "platform/win32/own_code.h"

#define PSAPI_VERSION 2 // the function is one of the system's core
#include <windows.h>

#include <psapi.h>

#include <array>
#include <string_view>

namespace Platform
{

namespace
{

using Path = std::array<wchar_t, 1024>;

/// With a separator at its end; empty when nothing is known of the address.
std::wstring_view folderOf(const void* instruction, Path& buffer)
{
    const DWORD length = GetMappedFileNameW(GetCurrentProcess(), const_cast<void*>(instruction), buffer.data(),
                                            static_cast<DWORD>(buffer.size()));
    const std::wstring_view path(buffer.data(), length);
    return path.substr(0, path.rfind(L'\\') + 1);
}

} // namespace

OwnCode::OwnCode()
{
    Path buffer;
    folder_ = folderOf(GetModuleHandleW(nullptr), buffer);
}

bool OwnCode::isOfTheProgram(const void* instruction) const
{
    MEMORY_BASIC_INFORMATION memory{};
    return VirtualQuery(instruction, &memory, sizeof memory) != 0 && memory.AllocationBase == GetModuleHandleW(nullptr);
}

bool OwnCode::contains(const void* instruction) const
{
    Path buffer;
    return isOfTheProgram(instruction) || (!folder_.empty() && folderOf(instruction, buffer) == folder_);
}

} // namespace Platform
