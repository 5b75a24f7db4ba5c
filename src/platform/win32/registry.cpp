#include "platform/win32/concerns.h"

#include <windows.h>

#include <vector>

namespace Platform
{

namespace
{

static_assert(KeyRead == KEY_READ && KeyAllAccess == KEY_ALL_ACCESS);
static_assert(KeyView64 == KEY_WOW64_64KEY && KeyView32 == KEY_WOW64_32KEY);
static_assert(OptionCreateLink == REG_OPTION_CREATE_LINK && OptionOpenLink == REG_OPTION_OPEN_LINK);
static_assert(ValueText == REG_SZ && ValueExpandText == REG_EXPAND_SZ && ValueBinary == REG_BINARY);
static_assert(ValueDword == REG_DWORD && ValueDwordBigEndian == REG_DWORD_BIG_ENDIAN && ValueQword == REG_QWORD);
static_assert(ValueLink == REG_LINK && ValueMultiText == REG_MULTI_SZ);
static_assert(ErrorSuccess == ERROR_SUCCESS && ErrorFileNotFound == ERROR_FILE_NOT_FOUND);
static_assert(ErrorAccessDenied == ERROR_ACCESS_DENIED && ErrorInvalidHandle == ERROR_INVALID_HANDLE);
static_assert(ErrorLockViolation == ERROR_LOCK_VIOLATION && ErrorInvalidParameter == ERROR_INVALID_PARAMETER);
static_assert(ErrorMoreData == ERROR_MORE_DATA && ErrorNoMoreItems == ERROR_NO_MORE_ITEMS);
static_assert(ErrorRegistryCorrupt == ERROR_REGISTRY_CORRUPT && ErrorKeyDeleted == ERROR_KEY_DELETED);
static_assert(ErrorDiskFull == ERROR_DISK_FULL);
static_assert(ErrorBadPathname == ERROR_BAD_PATHNAME && ErrorAlreadyExists == ERROR_ALREADY_EXISTS);
static_assert(sizeof(RegistryHandle) == sizeof(HKEY));

// The functions that are found by name. Their informations are records of the kernel, named by number.
using DeleteKeyObject = LONG NTAPI(HANDLE key);
using QueryKey = LONG NTAPI(HANDLE key, int informationClass, void* information, ULONG length, ULONG* needed);

HKEY keyOf(RegistryHandle handle)
{
    return reinterpret_cast<HKEY>(handle);
}

BYTE* bytesOf(void* data)
{
    return static_cast<BYTE*>(data);
}

std::uint32_t codeOf(LSTATUS result)
{
    return static_cast<std::uint32_t>(result);
}

/// Hands over what was opened, on success alone.
std::uint32_t give(LSTATUS result, HKEY key, RegistryHandle& handle)
{
    if (result == ERROR_SUCCESS)
        handle = reinterpret_cast<RegistryHandle>(key);
    return codeOf(result);
}

class Win32Registry : public Registry
{
public:
    std::uint32_t openKey(RegistryHandle parent, const std::wstring& path, std::uint32_t options, std::uint32_t access,
                          RegistryHandle& opened) override
    {
        HKEY key = nullptr;
        const LSTATUS result = RegOpenKeyExW(keyOf(parent), path.c_str(), options, access, &key);
        return give(result, key, opened);
    }

    std::uint32_t createKey(RegistryHandle parent, const std::wstring& path, std::uint32_t options,
                            std::uint32_t access, RegistryHandle& created) override
    {
        HKEY key = nullptr;
        const LSTATUS result =
            RegCreateKeyExW(keyOf(parent), path.c_str(), 0, nullptr, options, access, nullptr, &key, nullptr);
        return give(result, key, created);
    }

    std::uint32_t closeKey(RegistryHandle key) override { return codeOf(RegCloseKey(keyOf(key))); }

    std::uint32_t queryValue(RegistryHandle key, const std::wstring& name, std::uint32_t& type, void* data,
                             std::uint32_t& size) override
    {
        DWORD foundType = type;
        DWORD foundSize = size;
        const LSTATUS result =
            RegQueryValueExW(keyOf(key), name.c_str(), nullptr, &foundType, bytesOf(data), &foundSize);
        type = foundType;
        size = foundSize;
        return codeOf(result);
    }

    std::uint32_t setValue(RegistryHandle key, const std::wstring& name, std::uint32_t type, const void* data,
                           std::uint32_t size) override
    {
        return codeOf(RegSetValueExW(keyOf(key), name.c_str(), 0, type, static_cast<const BYTE*>(data), size));
    }

    std::uint32_t deleteValue(RegistryHandle key, const std::wstring& name) override
    {
        return codeOf(RegDeleteValueW(keyOf(key), name.c_str()));
    }

    std::uint32_t deleteSubKey(RegistryHandle key, const std::wstring& path) override
    {
        return codeOf(RegDeleteKeyW(keyOf(key), path.c_str()));
    }

    std::uint32_t enumerateKey(RegistryHandle key, std::uint32_t index, std::uint32_t capacity,
                               std::wstring& name) override
    {
        std::vector<wchar_t> buffer(capacity);
        DWORD length = capacity;
        const LSTATUS result =
            RegEnumKeyExW(keyOf(key), index, buffer.data(), &length, nullptr, nullptr, nullptr, nullptr);
        if (result == ERROR_SUCCESS)
            name.assign(buffer.data(), length);
        return codeOf(result);
    }

    std::uint32_t enumerateValue(RegistryHandle key, std::uint32_t index, std::uint32_t capacity, std::wstring& name,
                                 std::uint32_t& type, void* data, std::uint32_t& size) override
    {
        std::vector<wchar_t> buffer(capacity);
        DWORD length = capacity;
        DWORD foundType = type;
        DWORD foundSize = size;
        const LSTATUS result =
            RegEnumValueW(keyOf(key), index, buffer.data(), &length, nullptr, &foundType, bytesOf(data), &foundSize);
        if (result == ERROR_SUCCESS)
            name.assign(buffer.data(), length);
        type = foundType;
        size = foundSize;
        return codeOf(result);
    }

    std::uint32_t deleteKeyObject(void* function, RegistryHandle key) override
    {
        return static_cast<std::uint32_t>(reinterpret_cast<DeleteKeyObject*>(function)(keyOf(key)));
    }

    std::uint32_t queryKey(void* function, RegistryHandle key, std::uint32_t informationClass, void* buffer,
                           std::uint32_t length, std::uint32_t& needed) override
    {
        ULONG told = needed;
        const LONG status = reinterpret_cast<QueryKey*>(function)(keyOf(key), static_cast<int>(informationClass),
                                                                  buffer, length, &told);
        needed = told;
        return static_cast<std::uint32_t>(status);
    }
};

} // namespace

Registry& win32Registry()
{
    static Win32Registry registry;
    return registry;
}

} // namespace Platform
