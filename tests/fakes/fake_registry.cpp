#include "fakes/fake_registry.h"

#include "platform/handles.h"
#include "platform/registry_names.h"
#include "platform/utf16.h"

#include <algorithm>
#include <sstream>

namespace Fakes
{

namespace
{

using Platform::RegistryHandle;
using Platform::RegistryTree;

constexpr std::uint32_t StatusEntryPointNotFound = 0xC0000139;

std::wstring hexadecimal(std::uint32_t value)
{
    std::wostringstream text;
    text << L"0x" << std::hex << std::uppercase << value;
    return text.str();
}

std::wstring room(const void* buffer, std::uint32_t size)
{
    return buffer ? std::to_wstring(size) : L"null";
}

std::wstring optionsAndAccess(std::uint32_t options, std::uint32_t access)
{
    return hexadecimal(options) + L' ' + hexadecimal(access);
}

std::u16string folded(const std::wstring& path)
{
    return Platform::foldedName(Platform::registryUnits(path));
}

/// The fake processes give the address of its name as a function.
bool isFunction(const void* function, const char* name)
{
    return *static_cast<const std::string*>(function) == name;
}

void removeAll(RegistryTree& tree, Platform::RegistryKeyId id)
{
    while (!tree.find(id)->keys.empty())
        removeAll(tree, tree.find(id)->keys.begin()->second);
    tree.remove(id);
}

} // namespace

std::uint32_t FakeRegistryStorage::read(const Reading& reading)
{
    const std::lock_guard guard(lock_);
    return reading(tree_);
}

std::uint32_t FakeRegistryStorage::change(const Change& change)
{
    const std::lock_guard guard(lock_);
    return change(tree_);
}

/// The key, made when it is missing, and open for writing.
RegistryHandle FakeRegistry::made(const std::wstring& path, std::uint32_t options)
{
    RegistryHandle key = Platform::ClosedKey;
    registry_.createKey(Platform::CurrentUser, path, options, Platform::KeyAllAccess, key);
    return key;
}

void FakeRegistry::add(const std::wstring& path)
{
    registry_.closeKey(made(path, 0));
}

void FakeRegistry::addLink(const std::wstring& path, const std::wstring& target)
{
    const RegistryHandle key = made(path, Platform::OptionCreateLink);
    const auto data = Platform::toUtf16(fullName(target));
    registry_.setValue(key, L"SymbolicLinkValue", Platform::ValueLink, data.data(),
                       static_cast<std::uint32_t>(data.size()));
    registry_.closeKey(key);
}

void FakeRegistry::put(const std::wstring& path, const std::wstring& name, std::uint32_t type, const Bytes& data)
{
    const RegistryHandle key = made(path, 0);
    registry_.setValue(key, name, type, data.data(), static_cast<std::uint32_t>(data.size()));
    registry_.closeKey(key);
}

void FakeRegistry::putDword(const std::wstring& path, const std::wstring& name, std::uint32_t value)
{
    Bytes data;
    for (int shift = 0; shift < 32; shift += 8)
        data.push_back(static_cast<std::uint8_t>(value >> shift));
    put(path, name, Platform::ValueDword, data);
}

void FakeRegistry::putText(const std::wstring& path, const std::wstring& name, const std::wstring& text)
{
    put(path, name, Platform::ValueText, Platform::toUtf16(text + L'\0'));
}

void FakeRegistry::remove(const std::wstring& path)
{
    storage_.change(
        [&](RegistryTree& tree)
        {
            Platform::RegistryKeyId id = 0;
            const std::uint32_t error = tree.open(RegistryTree::Root, Platform::registryUnits(path), true, id);
            if (error == Platform::ErrorSuccess)
                removeAll(tree, id);
            return error;
        });
}

bool FakeRegistry::has(const std::wstring& path)
{
    Platform::RegistryKeyId id = 0;
    return storage_.read([&](const RegistryTree& tree)
                         { return tree.open(RegistryTree::Root, Platform::registryUnits(path), true, id); }) ==
           Platform::ErrorSuccess;
}

std::optional<FakeRegistry::Value> FakeRegistry::value(const std::wstring& path, const std::wstring& name)
{
    std::optional<Value> result;
    storage_.read(
        [&](const RegistryTree& tree)
        {
            Platform::RegistryKeyId id = 0;
            tree.open(RegistryTree::Root, Platform::registryUnits(path), true, id);
            if (const auto* found = tree.findValue(id, Platform::registryUnits(name)))
                result = {found->type, found->data};
            return Platform::ErrorSuccess;
        });
    return result;
}

std::wstring FakeRegistry::fullName(const std::wstring& path)
{
    return Platform::registryText(RegistryTree::rootName) + L'\\' + path;
}

void FakeRegistry::deny(const std::wstring& path)
{
    const std::lock_guard guard(lock_);
    denied_.push_back(L"HKCU\\" + path);
}

void FakeRegistry::fail(const std::wstring& operation, std::uint32_t result)
{
    const std::lock_guard guard(lock_);
    failures_.push_back({operation, {}, {}, result});
}

void FakeRegistry::failCall(const std::wstring& operation, int call, std::uint32_t result)
{
    const std::lock_guard guard(lock_);
    failures_.push_back({operation, call, {}, result});
}

void FakeRegistry::failIndex(const std::wstring& operation, std::uint32_t index, std::uint32_t result)
{
    const std::lock_guard guard(lock_);
    failures_.push_back({operation, {}, index, result});
}

void FakeRegistry::succeed()
{
    const std::lock_guard guard(lock_);
    failures_.clear();
    denied_.clear();
}

std::wstring FakeRegistry::pathOf(RegistryHandle key) const
{
    if (key == Platform::CurrentUser)
        return L"HKCU";
    if (key == Platform::LocalMachine)
        return L"HKLM";
    const std::lock_guard guard(lock_);
    const auto found = paths_.find(key);
    return found == paths_.end() ? L"closed" : found->second;
}

std::wstring FakeRegistry::pathOf(RegistryHandle key, const std::wstring& path) const
{
    const std::wstring first = path.substr(0, path.find(L'\0'));
    return first.empty() ? pathOf(key) : pathOf(key) + L'\\' + first;
}

bool FakeRegistry::isDenied(const std::wstring& path) const
{
    const std::lock_guard guard(lock_);
    return std::any_of(denied_.begin(), denied_.end(),
                       [&path](const std::wstring& denied) { return folded(denied) == folded(path); });
}

std::optional<std::uint32_t> FakeRegistry::enter(const std::wstring& operation, const std::wstring& path,
                                                 const std::wstring& rest, std::optional<std::uint32_t> index)
{
    log_.add(operation + L' ' + path + (rest.empty() ? rest : L' ' + rest));
    const std::lock_guard guard(lock_);
    std::optional<std::uint32_t> result;
    for (Failure& failure : failures_)
    {
        if (failure.operation != operation || (failure.index && failure.index != index))
            continue;
        if (failure.calls && (*failure.calls)-- != 0)
            continue;
        if (!result)
            result = failure.result;
    }
    return result;
}

std::uint32_t FakeRegistry::opened(std::uint32_t result, RegistryHandle key, const std::wstring& path)
{
    if (result != Platform::ErrorSuccess)
        return result;
    const std::lock_guard guard(lock_);
    paths_[key] = path;
    return result;
}

std::uint32_t FakeRegistry::openKey(RegistryHandle parent, const std::wstring& path, std::uint32_t options,
                                    std::uint32_t access, RegistryHandle& result)
{
    const std::wstring full = pathOf(parent, path);
    if (const auto failure = enter(L"openKey", full, optionsAndAccess(options, access)))
        return *failure;
    if (isDenied(full))
        return Platform::ErrorAccessDenied;
    const std::uint32_t error = registry_.openKey(parent, path, options, access, result);
    return opened(error, result, full);
}

std::uint32_t FakeRegistry::createKey(RegistryHandle parent, const std::wstring& path, std::uint32_t options,
                                      std::uint32_t access, RegistryHandle& created)
{
    const std::wstring full = pathOf(parent, path);
    if (const auto failure = enter(L"createKey", full, optionsAndAccess(options, access)))
        return *failure;
    if (isDenied(full))
        return Platform::ErrorAccessDenied;
    const std::uint32_t error = registry_.createKey(parent, path, options, access, created);
    return opened(error, created, full);
}

std::uint32_t FakeRegistry::closeKey(RegistryHandle key)
{
    if (const auto failure = enter(L"closeKey", pathOf(key)))
        return *failure;
    const std::uint32_t result = registry_.closeKey(key);
    const std::lock_guard guard(lock_);
    paths_.erase(key);
    return result;
}

std::uint32_t FakeRegistry::queryValue(RegistryHandle key, const std::wstring& name, std::uint32_t& type, void* data,
                                       std::uint32_t& size)
{
    if (const auto failure = enter(L"queryValue", pathOf(key), name + L' ' + room(data, size)))
        return *failure;
    return registry_.queryValue(key, name, type, data, size);
}

std::uint32_t FakeRegistry::setValue(RegistryHandle key, const std::wstring& name, std::uint32_t type, const void* data,
                                     std::uint32_t size)
{
    const std::wstring rest = name + L' ' + std::to_wstring(type) + L' ' + std::to_wstring(size);
    if (const auto failure = enter(L"setValue", pathOf(key), rest))
        return *failure;
    return registry_.setValue(key, name, type, data, size);
}

std::uint32_t FakeRegistry::deleteValue(RegistryHandle key, const std::wstring& name)
{
    if (const auto failure = enter(L"deleteValue", pathOf(key), name))
        return *failure;
    return registry_.deleteValue(key, name);
}

std::uint32_t FakeRegistry::deleteSubKey(RegistryHandle key, const std::wstring& path)
{
    const std::wstring full = pathOf(key, path);
    if (const auto failure = enter(L"deleteSubKey", full))
        return *failure;
    return isDenied(full) ? Platform::ErrorAccessDenied : registry_.deleteSubKey(key, path);
}

std::uint32_t FakeRegistry::enumerateKey(RegistryHandle key, std::uint32_t index, std::uint32_t capacity,
                                         std::wstring& name)
{
    const std::wstring rest = std::to_wstring(index) + L' ' + std::to_wstring(capacity);
    if (const auto failure = enter(L"enumerateKey", pathOf(key), rest, index))
        return *failure;
    return registry_.enumerateKey(key, index, capacity, name);
}

std::uint32_t FakeRegistry::enumerateValue(RegistryHandle key, std::uint32_t index, std::uint32_t capacity,
                                           std::wstring& name, std::uint32_t& type, void* data, std::uint32_t& size)
{
    const std::wstring rest = std::to_wstring(index) + L' ' + std::to_wstring(capacity) + L' ' + room(data, size);
    if (const auto failure = enter(L"enumerateValue", pathOf(key), rest, index))
        return *failure;
    return registry_.enumerateValue(key, index, capacity, name, type, data, size);
}

std::uint32_t FakeRegistry::deleteKeyObject(void* function, RegistryHandle key)
{
    if (const auto failure = enter(L"deleteKeyObject", pathOf(key)))
        return *failure;
    if (!isFunction(function, "ZwDeleteKey"))
        return StatusEntryPointNotFound;
    return registry_.deleteKeyObject(function, key);
}

std::uint32_t FakeRegistry::queryKey(void* function, RegistryHandle key, std::uint32_t informationClass, void* buffer,
                                     std::uint32_t length, std::uint32_t& needed)
{
    const std::wstring rest = std::to_wstring(informationClass) + L' ' + room(buffer, length);
    if (const auto failure = enter(L"queryKey", pathOf(key), rest))
        return *failure;
    if (!isFunction(function, "NtQueryKey"))
        return StatusEntryPointNotFound;
    return registry_.queryKey(function, key, informationClass, buffer, length, needed);
}

} // namespace Fakes
