#pragma once

#include <cstdint>
#include <string>

namespace Platform
{

/// A key that is open, or one of the roots, which always are. `ClosedKey` for none.
using RegistryHandle = std::intptr_t;

inline constexpr RegistryHandle ClosedKey = -1;
inline constexpr RegistryHandle CurrentUser = static_cast<std::int32_t>(0x80000001);  ///< `HKEY_CURRENT_USER`
inline constexpr RegistryHandle LocalMachine = static_cast<std::int32_t>(0x80000002); ///< `HKEY_LOCAL_MACHINE`

inline constexpr std::uint32_t KeyRead = 0x20019;      ///< `KEY_READ`
inline constexpr std::uint32_t KeyAllAccess = 0xF003F; ///< `KEY_ALL_ACCESS`
inline constexpr std::uint32_t KeyView64 = 0x0100;     ///< `KEY_WOW64_64KEY`
inline constexpr std::uint32_t KeyView32 = 0x0200;     ///< `KEY_WOW64_32KEY`

inline constexpr std::uint32_t OptionCreateLink = 2; ///< `REG_OPTION_CREATE_LINK`
inline constexpr std::uint32_t OptionOpenLink = 8;   ///< `REG_OPTION_OPEN_LINK`

// Types of values. Texts are 16-bit units on every system.
inline constexpr std::uint32_t ValueText = 1;           ///< `REG_SZ`
inline constexpr std::uint32_t ValueExpandText = 2;     ///< `REG_EXPAND_SZ`
inline constexpr std::uint32_t ValueBinary = 3;         ///< `REG_BINARY`
inline constexpr std::uint32_t ValueDword = 4;          ///< `REG_DWORD`, little-endian
inline constexpr std::uint32_t ValueDwordBigEndian = 5; ///< `REG_DWORD_BIG_ENDIAN`
inline constexpr std::uint32_t ValueLink = 6;           ///< `REG_LINK`
inline constexpr std::uint32_t ValueMultiText = 7;      ///< `REG_MULTI_SZ`
inline constexpr std::uint32_t ValueQword = 11;         ///< `REG_QWORD`

// Results, beside those of handles.h. 0 is success.
inline constexpr std::uint32_t ErrorSuccess = 0;
inline constexpr std::uint32_t ErrorInvalidHandle = 6;
inline constexpr std::uint32_t ErrorLockViolation = 33; ///< the store is being written for too long
inline constexpr std::uint32_t ErrorInvalidParameter = 87;
inline constexpr std::uint32_t ErrorDiskFull = 112;      ///< nothing was changed
inline constexpr std::uint32_t ErrorBadPathname = 161;   ///< a path that starts with a backslash
inline constexpr std::uint32_t ErrorAlreadyExists = 183; ///< a link is to be made where a key is
inline constexpr std::uint32_t ErrorMoreData = 234;      ///< the room that was offered is too small
inline constexpr std::uint32_t ErrorNoMoreItems = 259;
inline constexpr std::uint32_t ErrorRegistryCorrupt = 1015; ///< the store cannot be understood; it is left as it is
inline constexpr std::uint32_t ErrorKeyDeleted = 1018;

/// The tree of keys and typed values. Paths have backslashes on every system, names are compared whatever the case of
/// their letters, and a name ends at its first null. Every operation gives one of the results above. Any thread; one
/// handle belongs to one thread at a time.
class Registry
{
public:
    virtual ~Registry() = default;

    /// `RegOpenKeyExW`. On success `opened` is to be closed; otherwise it is unchanged.
    virtual std::uint32_t openKey(RegistryHandle parent, const std::wstring& path, std::uint32_t options,
                                  std::uint32_t access, RegistryHandle& opened) = 0;
    /// `RegCreateKeyExW` without a class: opens the key, and makes it and the keys above it when they are missing.
    virtual std::uint32_t createKey(RegistryHandle parent, const std::wstring& path, std::uint32_t options,
                                    std::uint32_t access, RegistryHandle& created) = 0;
    /// `RegCloseKey`.
    virtual std::uint32_t closeKey(RegistryHandle key) = 0;

    /// `RegQueryValueExW`. `size` is in bytes: the room at `data`, and then what the value needs. A null `data` asks
    /// for type and size alone. `ErrorMoreData` when the room is too small.
    virtual std::uint32_t queryValue(RegistryHandle key, const std::wstring& name, std::uint32_t& type, void* data,
                                     std::uint32_t& size) = 0;
    /// `RegSetValueExW`. `size` is in bytes.
    virtual std::uint32_t setValue(RegistryHandle key, const std::wstring& name, std::uint32_t type, const void* data,
                                   std::uint32_t size) = 0;
    /// `RegDeleteValueW`.
    virtual std::uint32_t deleteValue(RegistryHandle key, const std::wstring& name) = 0;
    /// `RegDeleteKeyW`: a key below this one that has no keys below itself.
    virtual std::uint32_t deleteSubKey(RegistryHandle key, const std::wstring& path) = 0;

    /// `RegEnumKeyExW` into a buffer of `capacity` characters, the terminator among them.
    virtual std::uint32_t enumerateKey(RegistryHandle key, std::uint32_t index, std::uint32_t capacity,
                                       std::wstring& name) = 0;
    /// `RegEnumValueW` into a name buffer of `capacity` characters; `data` and `size` as with `queryValue`.
    virtual std::uint32_t enumerateValue(RegistryHandle key, std::uint32_t index, std::uint32_t capacity,
                                         std::wstring& name, std::uint32_t& type, void* data, std::uint32_t& size) = 0;

    // Calls of a function of ntdll.dll that was found through `Processes`; it is never null. Both give a status.

    /// `ZwDeleteKey`: the key itself, even if it is a link. The handle is still to be closed.
    virtual std::uint32_t deleteKeyObject(void* function, RegistryHandle key) = 0;
    /// `NtQueryKey` into `length` bytes at `buffer`; `needed` is how many there are to be told.
    virtual std::uint32_t queryKey(void* function, RegistryHandle key, std::uint32_t informationClass, void* buffer,
                                   std::uint32_t length, std::uint32_t& needed) = 0;
};

} // namespace Platform
