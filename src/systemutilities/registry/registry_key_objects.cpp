#include "systemutilities/registry/registry_key.h"

#include "platform/handles.h"
#include "platform/platform.h"
#include "platform/utf16.h"
#include "systemutilities/registry/nt_function.h"
#include "systemutilities/shell_utilities.h"
#include "systemutilities/win32_exception.h"

#include <algorithm>
#include <cstddef>
#include <span>

namespace Halden::SystemUtilities::Registry
{

namespace
{

constexpr std::uint32_t NameCapacity = 260; // with the terminator
constexpr wchar_t Separator = L'\\';        // on every system

constexpr std::uint32_t KeyNameInformation = 3;
constexpr std::size_t LengthOfName = 4; // bytes before the name in that record

constexpr std::uint32_t StatusSuccess = 0;
constexpr std::uint32_t StatusInvalidHandle = 0xC0000008;
constexpr std::uint32_t StatusAccessDenied = 0xC0000022;
constexpr std::uint32_t StatusBufferTooSmall = 0xC0000023;

Platform::Registry& registry()
{
    return Platform::platform().registry;
}

std::uint32_t errorOf(std::uint32_t status)
{
    if (status == StatusAccessDenied)
        return Platform::ErrorAccessDenied;
    if (status == StatusInvalidHandle)
        return Platform::ErrorInvalidHandle;
    return status; // any other is passed on as it stands
}

std::uint32_t sizeOfName(void* query, Platform::RegistryHandle key)
{
    std::uint32_t size = 0;
    const std::uint32_t status = registry().queryKey(query, key, KeyNameInformation, nullptr, 0, size);
    if (status != StatusBufferTooSmall)
        throw Win32Exception("NtQueryKey failed to get buffer size. NTStatusCode: ", status);
    return size;
}

} // namespace

void RegistryKey::DeleteKey()
{
    for (const RegistryValue& value : GetValues(true))
        DeleteValue(value.name, true);
    openForWriting(true);
    const NtFunction deleteKey("ZwDeleteKey", "Can't get address of ZwDeleteKey.");
    const std::uint32_t status = registry().deleteKeyObject(deleteKey.address(), handle_);
    if (status != StatusSuccess)
        throw Win32Exception("ZwDeleteKey failed.", errorOf(status));
}

void RegistryKey::DeleteSubKey(const std::wstring& subKey, bool isLink)
{
    if (isLink)
    {
        // Intended: the child is seen in the 32-bit view, whichever view this object has.
        RegistryKey(root_, JoinPath(path_, subKey, Separator), false).DeleteKey();
        return;
    }
    openForWriting(false);
    const std::uint32_t result = registry().deleteSubKey(handle_, subKey);
    if (result != Platform::ErrorSuccess && result != Platform::ErrorFileNotFound)
        throw Win32Exception("RegDeleteKey failed.", result);
}

std::vector<std::wstring> RegistryKey::GetSubKeys()
{
    std::vector<std::wstring> names;
    if (!openForReading(false))
        return names;
    for (std::uint32_t index = 0;; ++index)
    {
        std::wstring name;
        const std::uint32_t result = registry().enumerateKey(handle_, index, NameCapacity, name);
        if (result == Platform::ErrorNoMoreItems)
            return names;
        if (result == Platform::ErrorAccessDenied)
            continue; // the other keys can still be seen
        if (result != Platform::ErrorSuccess)
            throw Win32Exception("GetSubKeys failed.", result);
        names.push_back(std::move(name));
    }
}

void RegistryKey::SetLinkTarget(const std::wstring& name, const std::wstring& target)
{
    SetRawValue(name, Platform::ValueLink, Platform::toUtf16(target)); // without a terminator
}

std::vector<std::pair<std::wstring, std::wstring>> RegistryKey::GetLinks()
{
    std::vector<std::pair<std::wstring, std::wstring>> links;
    for (RegistryValue& value : GetValues(true))
        if (value.type == Platform::ValueLink)
            links.emplace_back(std::move(value.name), Platform::fromUtf16(value.data));
    return links;
}

std::wstring RegistryKey::GetNtPath()
{
    if (!openForReading(false))
        throw Win32Exception("Can't open key to get full NT path", Platform::ErrorFileNotFound);
    const NtFunction query("NtQueryKey", "Can't get address of NtQueryKey.");
    std::uint32_t size = sizeOfName(query.address(), handle_);
    Bytes record((std::size_t{size} + 2) / 2 * 2);
    const std::uint32_t status = registry().queryKey(query.address(), handle_, KeyNameInformation, record.data(),
                                                     static_cast<std::uint32_t>(record.size()), size);
    if (status != StatusSuccess)
        throw Win32Exception("NtQueryKey failed. NTStatusCode: ", status);
    const std::span reported(record.data(), std::min<std::size_t>(size, record.size()));
    if (reported.size() < LengthOfName)
        return {};
    const std::wstring name = Platform::fromUtf16(reported.subspan(LengthOfName));
    return name.substr(0, name.find(L'\0'));
}

} // namespace Halden::SystemUtilities::Registry
