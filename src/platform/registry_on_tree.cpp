#include "platform/registry_on_tree.h"

#include "platform/handles.h"
#include "platform/registry_names.h"

#include <algorithm>
#include <cstring>

namespace Platform
{

namespace
{

constexpr RegistryKeyId NoKey = 0;

// What an open key may be used for.
constexpr std::uint32_t MayQueryValues = 0x0001;
constexpr std::uint32_t MaySetValues = 0x0002;
constexpr std::uint32_t MayEnumerateKeys = 0x0008;
constexpr std::uint32_t MayDelete = 0x00010000;

constexpr std::uint32_t StatusSuccess = 0;
constexpr std::uint32_t StatusBufferOverflow = 0x80000005;
constexpr std::uint32_t StatusUnsuccessful = 0xC0000001;
constexpr std::uint32_t StatusInvalidHandle = 0xC0000008;
constexpr std::uint32_t StatusInvalidParameter = 0xC000000D;
constexpr std::uint32_t StatusAccessDenied = 0xC0000022;
constexpr std::uint32_t StatusBufferTooSmall = 0xC0000023;
constexpr std::uint32_t StatusFileLockConflict = 0xC0000054;
constexpr std::uint32_t StatusDiskFull = 0xC000007F;
constexpr std::uint32_t StatusCannotDelete = 0xC0000121;
constexpr std::uint32_t StatusRegistryCorrupt = 0xC000014C;
constexpr std::uint32_t StatusKeyDeleted = 0xC000017C;

constexpr std::uint32_t KeyNameInformation = 3;
constexpr std::uint32_t LengthSize = 4; ///< of the length before the name

std::uint32_t statusOf(std::uint32_t error)
{
    switch (error)
    {
    case ErrorSuccess:
        return StatusSuccess;
    case ErrorAccessDenied:
        return StatusAccessDenied;
    case ErrorInvalidHandle:
        return StatusInvalidHandle;
    case ErrorLockViolation:
        return StatusFileLockConflict;
    case ErrorDiskFull:
        return StatusDiskFull;
    case ErrorRegistryCorrupt:
        return StatusRegistryCorrupt;
    case ErrorKeyDeleted:
        return StatusKeyDeleted;
    default:
        return StatusUnsuccessful;
    }
}

bool isRoot(RegistryHandle handle)
{
    constexpr RegistryHandle First = static_cast<std::int32_t>(0x80000000);
    constexpr RegistryHandle Last = static_cast<std::int32_t>(0x80000006);
    return handle >= First && handle <= Last;
}

bool opensLink(std::uint32_t options)
{
    return (options & OptionOpenLink) != 0;
}

/// Gives a value to whoever asked for it, as far as there is room.
std::uint32_t give(const RegistryValue& value, std::uint32_t& type, void* data, std::uint32_t& size)
{
    const std::uint32_t room = size;
    type = value.type;
    size = static_cast<std::uint32_t>(value.data.size());
    if (!data)
        return ErrorSuccess;
    if (room < size)
        return ErrorMoreData;
    std::copy(value.data.begin(), value.data.end(), static_cast<std::uint8_t*>(data));
    return ErrorSuccess;
}

/// Writes the name record: its length in bytes, then the units.
void writeName(const std::u16string& name, void* buffer, std::uint32_t length)
{
    const auto bytes = static_cast<std::uint32_t>(name.size() * sizeof(char16_t));
    std::memcpy(buffer, &bytes, sizeof bytes);
    std::memcpy(static_cast<std::uint8_t*>(buffer) + LengthSize, name.data(), std::min(bytes, length - LengthSize));
}

} // namespace

std::size_t RegistryOnTree::openHandles() const
{
    const std::lock_guard guard(lock_);
    return keys_.size();
}

RegistryHandle RegistryOnTree::add(const OpenKey& key)
{
    const std::lock_guard guard(lock_);
    last_ += 4; // a number is never used again, so that a closed handle means nothing else
    keys_[last_] = key;
    return last_;
}

/// A root or an open key that may be used like this.
std::uint32_t RegistryOnTree::find(RegistryHandle handle, std::uint32_t access, OpenKey& key) const
{
    if (isRoot(handle))
    {
        key = {handle == CurrentUser ? RegistryTree::Root : NoKey, KeyAllAccess};
        return ErrorSuccess;
    }
    if (const std::uint32_t error = findObject(handle, key); error != ErrorSuccess)
        return error;
    return (key.access & access) == access ? ErrorSuccess : ErrorAccessDenied;
}

/// An open key; the roots are no objects.
std::uint32_t RegistryOnTree::findObject(RegistryHandle handle, OpenKey& key) const
{
    const std::lock_guard guard(lock_);
    const auto found = keys_.find(handle);
    if (found == keys_.end())
        return ErrorInvalidHandle;
    key = found->second;
    return ErrorSuccess;
}

std::uint32_t RegistryOnTree::openKey(RegistryHandle parent, const std::wstring& path, std::uint32_t options,
                                      std::uint32_t access, RegistryHandle& opened)
{
    OpenKey from;
    if (const std::uint32_t error = find(parent, 0, from); error != ErrorSuccess)
        return error;
    if (from.id == NoKey)
        return ErrorFileNotFound;
    OpenKey key{NoKey, access};
    const std::uint32_t error = storage_.read(
        [&](const RegistryTree& tree) { return tree.open(from.id, registryUnits(path), opensLink(options), key.id); });
    if (error == ErrorSuccess)
        opened = add(key);
    return error;
}

std::uint32_t RegistryOnTree::createKey(RegistryHandle parent, const std::wstring& path, std::uint32_t options,
                                        std::uint32_t access, RegistryHandle& created)
{
    OpenKey from;
    if (const std::uint32_t error = find(parent, 0, from); error != ErrorSuccess)
        return error;
    if (from.id == NoKey)
        return ErrorAccessDenied;
    const std::u16string units = registryUnits(path);
    const bool isLink = (options & OptionCreateLink) != 0;
    OpenKey key{NoKey, access};
    // A key that is there is opened without waiting for those who write.
    std::uint32_t error =
        storage_.read([&](const RegistryTree& tree) { return tree.open(from.id, units, opensLink(options), key.id); });
    if (error == ErrorFileNotFound || (error == ErrorSuccess && isLink))
        error = storage_.change([&](RegistryTree& tree) { return tree.create(from.id, units, options, key.id); });
    if (error == ErrorSuccess)
        created = add(key);
    return error;
}

std::uint32_t RegistryOnTree::closeKey(RegistryHandle key)
{
    if (isRoot(key))
        return ErrorSuccess;
    const std::lock_guard guard(lock_);
    return keys_.erase(key) == 1 ? ErrorSuccess : ErrorInvalidHandle;
}

std::uint32_t RegistryOnTree::queryValue(RegistryHandle key, const std::wstring& name, std::uint32_t& type, void* data,
                                         std::uint32_t& size)
{
    OpenKey open;
    if (const std::uint32_t error = find(key, MayQueryValues, open); error != ErrorSuccess)
        return error;
    if (open.id == NoKey)
        return ErrorFileNotFound;
    return storage_.read(
        [&](const RegistryTree& tree)
        {
            if (!tree.find(open.id))
                return ErrorKeyDeleted;
            const RegistryValue* value = tree.findValue(open.id, registryUnits(name));
            return value ? give(*value, type, data, size) : ErrorFileNotFound;
        });
}

std::uint32_t RegistryOnTree::setValue(RegistryHandle key, const std::wstring& name, std::uint32_t type,
                                       const void* data, std::uint32_t size)
{
    OpenKey open;
    if (const std::uint32_t error = find(key, MaySetValues, open); error != ErrorSuccess)
        return error;
    if (open.id == NoKey)
        return ErrorAccessDenied;
    const auto* bytes = static_cast<const std::uint8_t*>(data);
    RegistryValue value{registryUnits(name), type, {}};
    if (size > 0)
        value.data.assign(bytes, bytes + size);
    return storage_.change([&](RegistryTree& tree) { return tree.setValue(open.id, std::move(value)); });
}

std::uint32_t RegistryOnTree::deleteValue(RegistryHandle key, const std::wstring& name)
{
    OpenKey open;
    if (const std::uint32_t error = find(key, MaySetValues, open); error != ErrorSuccess)
        return error;
    if (open.id == NoKey)
        return ErrorFileNotFound;
    return storage_.change([&](RegistryTree& tree) { return tree.removeValue(open.id, registryUnits(name)); });
}

std::uint32_t RegistryOnTree::deleteSubKey(RegistryHandle key, const std::wstring& path)
{
    OpenKey from;
    if (const std::uint32_t error = find(key, 0, from); error != ErrorSuccess)
        return error;
    if (from.id == NoKey)
        return ErrorFileNotFound;
    return storage_.change(
        [&](RegistryTree& tree)
        {
            RegistryKeyId found = NoKey;
            const std::uint32_t error = tree.open(from.id, registryUnits(path), false, found);
            return error == ErrorSuccess ? tree.remove(found) : error;
        });
}

std::uint32_t RegistryOnTree::enumerateKey(RegistryHandle key, std::uint32_t index, std::uint32_t capacity,
                                           std::wstring& name)
{
    OpenKey open;
    if (const std::uint32_t error = find(key, MayEnumerateKeys, open); error != ErrorSuccess)
        return error;
    if (open.id == NoKey)
        return ErrorNoMoreItems;
    return storage_.read(
        [&](const RegistryTree& tree)
        {
            const RegistryTreeKey* parent = tree.find(open.id);
            if (!parent)
                return ErrorKeyDeleted;
            if (index >= parent->keys.size())
                return ErrorNoMoreItems;
            const auto& child = *std::next(parent->keys.begin(), static_cast<std::ptrdiff_t>(index));
            const std::u16string& units = tree.find(child.second)->name;
            if (units.size() >= capacity)
                return ErrorMoreData;
            name = registryText(units);
            return ErrorSuccess;
        });
}

std::uint32_t RegistryOnTree::enumerateValue(RegistryHandle key, std::uint32_t index, std::uint32_t capacity,
                                             std::wstring& name, std::uint32_t& type, void* data, std::uint32_t& size)
{
    OpenKey open;
    if (const std::uint32_t error = find(key, MayQueryValues, open); error != ErrorSuccess)
        return error;
    if (open.id == NoKey)
        return ErrorNoMoreItems;
    return storage_.read(
        [&](const RegistryTree& tree)
        {
            const RegistryTreeKey* parent = tree.find(open.id);
            if (!parent)
                return ErrorKeyDeleted;
            if (index >= parent->values.size())
                return ErrorNoMoreItems;
            const RegistryValue& value = parent->values[index];
            const bool hasRoom = value.name.size() < capacity;
            if (hasRoom)
                name = registryText(value.name);
            const std::uint32_t error = give(value, type, data, size);
            return hasRoom ? error : ErrorMoreData;
        });
}

std::uint32_t RegistryOnTree::deleteKeyObject(void*, RegistryHandle key)
{
    OpenKey open;
    if (const std::uint32_t error = findObject(key, open); error != ErrorSuccess)
        return statusOf(error);
    if ((open.access & MayDelete) == 0)
        return StatusAccessDenied;
    bool hasKeys = false;
    const std::uint32_t error = storage_.change(
        [&](RegistryTree& tree)
        {
            const std::uint32_t result = tree.remove(open.id);
            hasKeys = result == ErrorAccessDenied;
            return result;
        });
    return hasKeys ? StatusCannotDelete : statusOf(error);
}

std::uint32_t RegistryOnTree::queryKey(void*, RegistryHandle key, std::uint32_t informationClass, void* buffer,
                                       std::uint32_t length, std::uint32_t& needed)
{
    if (informationClass != KeyNameInformation)
        return StatusInvalidParameter;
    OpenKey open;
    std::u16string name;
    std::uint32_t error = findObject(key, open);
    if (error == ErrorSuccess)
        error = storage_.read(
            [&](const RegistryTree& tree)
            {
                if (!tree.find(open.id))
                    return ErrorKeyDeleted;
                name = tree.fullName(open.id);
                return ErrorSuccess;
            });
    if (error != ErrorSuccess)
        return statusOf(error);
    needed = static_cast<std::uint32_t>(LengthSize + name.size() * sizeof(char16_t));
    if (!buffer || length < LengthSize)
        return StatusBufferTooSmall;
    writeName(name, buffer, length);
    return length < needed ? StatusBufferOverflow : StatusSuccess;
}

} // namespace Platform
