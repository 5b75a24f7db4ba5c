#include "platform/registry_on_tree.h"

#include "platform/handles.h"
#include "platform/registry_names.h"

#include <algorithm>

namespace Platform
{

namespace
{

constexpr RegistryKeyId NoKey = 0;

// What an open key may be used for.
constexpr std::uint32_t MayQueryValues = 0x0001;
constexpr std::uint32_t MaySetValues = 0x0002;
constexpr std::uint32_t MayEnumerateKeys = 0x0008;

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

/// The current user or an open key that may be used like this; `otherRoot` for a root that holds nothing.
std::uint32_t RegistryOnTree::find(RegistryHandle handle, std::uint32_t access, std::uint32_t otherRoot,
                                   OpenKey& key) const
{
    if (handle == CurrentUser)
    {
        key = {RegistryTree::Root, KeyAllAccess};
        return ErrorSuccess;
    }
    if (isRoot(handle))
        return otherRoot;
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
    if (const std::uint32_t error = find(parent, 0, ErrorFileNotFound, from); error != ErrorSuccess)
        return error;
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
    if (const std::uint32_t error = find(parent, 0, ErrorAccessDenied, from); error != ErrorSuccess)
        return error;
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
    if (const std::uint32_t error = find(key, MayQueryValues, ErrorFileNotFound, open); error != ErrorSuccess)
        return error;
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
    if (const std::uint32_t error = find(key, MaySetValues, ErrorAccessDenied, open); error != ErrorSuccess)
        return error;
    const auto* bytes = static_cast<const std::uint8_t*>(data);
    RegistryValue value{registryUnits(name), type, {}};
    if (size > 0)
        value.data.assign(bytes, bytes + size);
    return storage_.change([&](RegistryTree& tree) { return tree.setValue(open.id, std::move(value)); });
}

std::uint32_t RegistryOnTree::deleteValue(RegistryHandle key, const std::wstring& name)
{
    OpenKey open;
    if (const std::uint32_t error = find(key, MaySetValues, ErrorFileNotFound, open); error != ErrorSuccess)
        return error;
    return storage_.change([&](RegistryTree& tree) { return tree.removeValue(open.id, registryUnits(name)); });
}

std::uint32_t RegistryOnTree::deleteSubKey(RegistryHandle key, const std::wstring& path)
{
    OpenKey from;
    if (const std::uint32_t error = find(key, 0, ErrorFileNotFound, from); error != ErrorSuccess)
        return error;
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
    if (const std::uint32_t error = find(key, MayEnumerateKeys, ErrorNoMoreItems, open); error != ErrorSuccess)
        return error;
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
    if (const std::uint32_t error = find(key, MayQueryValues, ErrorNoMoreItems, open); error != ErrorSuccess)
        return error;
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

} // namespace Platform
