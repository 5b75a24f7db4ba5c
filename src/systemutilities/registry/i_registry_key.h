#pragma once

#include "platform/registry.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Halden::SystemUtilities::Registry
{

using Bytes = std::vector<std::uint8_t>;

/// One value of a key.
struct RegistryValue
{
    std::wstring name;
    std::uint32_t type = 0; ///< `Platform::ValueText` and its like
    Bytes data;             ///< texts are 16-bit units on every system
};

/// One key of the registry: a path below a root, seen in the 64-bit or the 32-bit view. The key is opened by the first
/// operation that needs it, and stays open for those that follow until the object is destroyed.
///
/// A read that finds no key or no value gives the default back, or nothing; it never fails for that. A write needs the
/// key: only `Create` and `CreateSubKey` make one. Every failure is a `Win32Exception` with the result as its code.
///
/// `openLink` is for keys that are symbolic links: true means the link itself, false the key that it leads to.
/// No lock: one object belongs to one thread at a time.
class IRegistryKey
{
public:
    virtual ~IRegistryKey() = default;

    /// Whether the key can be found in the view of this process, whichever view the object has.
    virtual bool Exists(bool openLink) = 0;
    /// Opens the key for writing and makes it, and those above it, when it is missing. `createLink` makes a symbolic
    /// link, which leads somewhere once `SetLinkTarget` has been called. Gives the handle, which the object keeps.
    virtual Platform::RegistryHandle Create(bool createLink) = 0;
    /// Deletes the key with its values, even if it is a symbolic link. It must not have keys below itself.
    virtual void DeleteKey() = 0;

    /// A text, expandable or not, up to its first null. The default for a value of any other type.
    virtual std::wstring GetString(const std::wstring& name, const std::wstring& defaultValue) = 0;
    /// The default for a value of any other type.
    virtual std::vector<std::wstring> GetMultiString(const std::wstring& name,
                                                     const std::vector<std::wstring>& defaultValue) = 0;
    /// At most 4 bytes, whatever the type of the value. Fails with `ErrorMoreData` for a longer value.
    virtual std::uint32_t GetDword(const std::wstring& name, std::uint32_t defaultValue) = 0;
    /// At most 8 bytes, in the same way.
    virtual std::uint64_t GetQword(const std::wstring& name, std::uint64_t defaultValue) = 0;
    /// The data of a value of any type.
    virtual Bytes GetBinary(const std::wstring& name) = 0;

    virtual void SetString(const std::wstring& name, const std::wstring& value) = 0;
    /// A text in the list that is empty ends it for who reads it, unless it stands first.
    virtual void SetMultiString(const std::wstring& name, const std::vector<std::wstring>& value) = 0;
    /// `bigEndian` chooses the type alone: the bytes are stored in the same order.
    virtual void SetDword(const std::wstring& name, std::uint32_t value, bool bigEndian) = 0;
    virtual void SetBinary(const std::wstring& name, const Bytes& value) = 0;
    virtual void SetQword(const std::wstring& name, std::uint64_t value) = 0;
    virtual void SetExpandString(const std::wstring& name, const std::wstring& value) = 0;
    /// To delete a value that does not exist succeeds.
    virtual void DeleteValue(const std::wstring& name, bool openLink) = 0;
    /// Writes where this symbolic link leads to; the system wants the name "SymbolicLinkValue" and a full path in its
    /// own form, as `GetNtPath` gives it.
    virtual void SetLinkTarget(const std::wstring& name, const std::wstring& target) = 0;
    /// Names and targets of the link values of this key, which is opened as a link.
    virtual std::vector<std::pair<std::wstring, std::wstring>> GetLinks() = 0;
    /// Writes a value of any type as it stands. The key is opened as a link exactly for `Platform::ValueLink`.
    virtual void SetRawValue(const std::wstring& name, std::uint32_t type, const Bytes& data) = 0;
    /// False when there is no such value; both are then unchanged.
    virtual bool GetRawValue(const std::wstring& name, std::uint32_t& type, Bytes& data) = 0;

    /// Makes a key below this one, or opens it when it is there.
    virtual void CreateSubKey(const std::wstring& subKey, bool createLink) = 0;
    /// Deletes a key below this one that has no keys below itself; to delete one that does not exist succeeds. With
    /// `isLink` it is a symbolic link in the 32-bit view, which has to exist.
    virtual void DeleteSubKey(const std::wstring& subKey, bool isLink) = 0;
    /// Names of the keys below this one; those that may not be seen are left out.
    virtual std::vector<std::wstring> GetSubKeys() = 0;
    /// All values; those that may not be seen are left out.
    virtual std::vector<RegistryValue> GetValues(bool openLink) = 0;
    /// Full path of the key as the system's kernel calls it, such as "\REGISTRY\USER\...". The key has to exist.
    virtual std::wstring GetNtPath() = 0;
};

/// A key at `path` below `root`, which is one of the roots or a key that stays open for as long as the object lives.
/// Nothing is opened yet. Null when there is no memory for it.
std::unique_ptr<IRegistryKey> CreateRegistryKey(Platform::RegistryHandle root, std::wstring path, bool view64);

} // namespace Halden::SystemUtilities::Registry
