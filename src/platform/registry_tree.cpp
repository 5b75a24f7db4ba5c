#include "platform/registry_tree.h"

#include "platform/handles.h"
#include "platform/registry_names.h"

#include <algorithm>
#include <cstring>
#include <deque>

namespace Platform
{

namespace
{

constexpr int MostLinks = 16; ///< on one path; more are taken for a loop

using Names = std::deque<std::u16string>;

/// Separators that follow one another, or end the path, count as one.
Names partsOf(std::u16string_view path)
{
    Names parts;
    while (!path.empty())
    {
        const std::size_t end = std::min(path.find(u'\\'), path.size());
        if (end > 0)
            parts.emplace_back(path.substr(0, end));
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return parts;
}

bool hasTooLongName(const Names& names)
{
    return std::any_of(names.begin(), names.end(),
                       [](const std::u16string& name) { return name.size() > LongestKeyName; });
}

std::u16string unitsOf(const std::vector<std::uint8_t>& data)
{
    std::u16string units;
    for (std::size_t index = 0; index + 1 < data.size(); index += 2)
        units += static_cast<char16_t>(data[index] | data[index + 1] << 8);
    return units;
}

auto positionOf(const std::vector<RegistryValue>& values, std::u16string_view name)
{
    return std::find_if(values.begin(), values.end(),
                        [folded = foldedName(name)](const RegistryValue& value)
                        { return foldedName(value.name) == folded; });
}

/// A link holds where it leads, and nothing else.
bool mayHold(const RegistryTreeKey& key, const RegistryValue& value)
{
    return !key.isLink || (value.type == ValueLink && foldedName(value.name) == foldedName(LinkValueName));
}

} // namespace

/// Where one is on the way along a path, and what of it is still ahead.
struct RegistryTree::Walk
{
    RegistryKeyId at = Root;
    Names ahead;
    int links = 0;
};

RegistryTree::RegistryTree()
{
    keys_[Root];
}

const RegistryTreeKey* RegistryTree::find(RegistryKeyId id) const
{
    const auto found = keys_.find(id);
    return found == keys_.end() ? nullptr : &found->second;
}

const RegistryValue* RegistryTree::findValue(RegistryKeyId id, std::u16string_view name) const
{
    const RegistryTreeKey* key = find(id);
    if (!key)
        return nullptr;
    const auto found = positionOf(key->values, name);
    return found == key->values.end() ? nullptr : &*found;
}

/// Puts the target of a link before what is still ahead.
std::uint32_t RegistryTree::follow(const RegistryTreeKey& link, Walk& walk)
{
    if (++walk.links > MostLinks)
        return ErrorInvalidParameter;
    const auto value = positionOf(link.values, LinkValueName);
    if (value == link.values.end())
        return ErrorFileNotFound;
    Names target = partsOf(unitsOf(value->data));
    for (const std::u16string& part : partsOf(rootName))
    {
        if (target.empty() || foldedName(target.front()) != foldedName(part))
            return ErrorFileNotFound;
        target.pop_front();
    }
    walk.ahead.insert(walk.ahead.begin(), target.begin(), target.end());
    walk.at = Root;
    return ErrorSuccess;
}

/// Goes as far as there are keys. What is still ahead then is missing, and `ErrorFileNotFound` when something is.
std::uint32_t RegistryTree::walk(Walk& walk, bool opensLink) const
{
    while (!walk.ahead.empty())
    {
        const RegistryTreeKey& key = *find(walk.at);
        const auto child = key.keys.find(foldedName(walk.ahead.front()));
        if (child == key.keys.end())
            return ErrorFileNotFound;
        const RegistryTreeKey& next = *find(child->second);
        const bool isLast = walk.ahead.size() == 1;
        if (!next.isLink || (isLast && opensLink))
        {
            walk.at = child->second;
            walk.ahead.pop_front();
            continue;
        }
        walk.ahead.pop_front();
        if (const std::uint32_t error = follow(next, walk); error != ErrorSuccess)
        {
            walk.ahead.clear(); // nothing can be made there either
            return error;
        }
    }
    return ErrorSuccess;
}

std::uint32_t RegistryTree::open(RegistryKeyId from, std::u16string_view path, bool opensLink,
                                 RegistryKeyId& found) const
{
    if (!find(from))
        return ErrorKeyDeleted;
    if (path.starts_with(u'\\'))
        return ErrorBadPathname;
    Walk way{from, partsOf(path)};
    const std::uint32_t error = walk(way, opensLink);
    if (error == ErrorSuccess)
        found = way.at;
    return error;
}

std::uint32_t RegistryTree::create(RegistryKeyId from, std::u16string_view path, std::uint32_t options,
                                   RegistryKeyId& created)
{
    if (!find(from))
        return ErrorKeyDeleted;
    if (path.starts_with(u'\\'))
        return ErrorBadPathname;
    const bool isLink = (options & OptionCreateLink) != 0;
    Walk way{from, partsOf(path)};
    if (hasTooLongName(way.ahead))
        return ErrorInvalidParameter;
    const std::uint32_t error = walk(way, isLink || (options & OptionOpenLink) != 0);
    if (error == ErrorSuccess && isLink)
        return ErrorAlreadyExists;
    if (error == ErrorSuccess)
        created = way.at;
    if (error == ErrorSuccess || way.ahead.empty())
        return error;
    return makeMissing(way, isLink, created);
}

std::uint32_t RegistryTree::makeMissing(const Walk& walk, bool isLink, RegistryKeyId& created)
{
    if (find(walk.at)->isLink)
        return ErrorAccessDenied;
    if (hasTooLongName(walk.ahead)) // of the target of a link
        return ErrorInvalidParameter;
    RegistryKeyId parent = walk.at;
    for (std::size_t index = 0; index < walk.ahead.size(); ++index)
    {
        add(newest_ + 1, parent, walk.ahead[index], isLink && index + 1 == walk.ahead.size());
        parent = ++newest_;
    }
    created = parent;
    return ErrorSuccess;
}

bool RegistryTree::add(RegistryKeyId id, RegistryKeyId parent, std::u16string_view name, bool isLink)
{
    const auto above = keys_.find(parent);
    if (above == keys_.end() || above->second.isLink || keys_.contains(id) || name.empty() ||
        name.size() > LongestKeyName || name.find(u'\\') != name.npos)
        return false;
    if (!above->second.keys.emplace(foldedName(name), id).second)
        return false;
    RegistryTreeKey& key = keys_[id];
    key.parent = parent;
    key.name = name;
    key.isLink = isLink;
    return true;
}

std::uint32_t RegistryTree::remove(RegistryKeyId id)
{
    const RegistryTreeKey* key = find(id);
    if (!key)
        return ErrorKeyDeleted;
    if (id == Root || !key->keys.empty())
        return ErrorAccessDenied;
    keys_.at(key->parent).keys.erase(foldedName(key->name));
    keys_.erase(id);
    return ErrorSuccess;
}

std::uint32_t RegistryTree::append(RegistryKeyId id, RegistryValue value)
{
    const auto found = keys_.find(id);
    if (found == keys_.end())
        return ErrorKeyDeleted;
    if (value.name.size() > LongestValueName)
        return ErrorInvalidParameter;
    if (!mayHold(found->second, value))
        return ErrorAccessDenied;
    found->second.values.push_back(std::move(value));
    return ErrorSuccess;
}

std::uint32_t RegistryTree::setValue(RegistryKeyId id, RegistryValue value)
{
    const auto found = keys_.find(id);
    if (found == keys_.end())
        return ErrorKeyDeleted;
    RegistryTreeKey& key = found->second;
    const auto old = positionOf(key.values, value.name);
    if (old == key.values.end())
        return append(id, std::move(value));
    if (!mayHold(key, value))
        return ErrorAccessDenied;
    RegistryValue& kept = key.values[static_cast<std::size_t>(old - key.values.begin())];
    kept.type = value.type;
    kept.data = std::move(value.data);
    return ErrorSuccess;
}

std::uint32_t RegistryTree::removeValue(RegistryKeyId id, std::u16string_view name)
{
    const auto found = keys_.find(id);
    if (found == keys_.end())
        return ErrorKeyDeleted;
    std::vector<RegistryValue>& values = found->second.values;
    const auto value = positionOf(values, name);
    if (value == values.end())
        return ErrorFileNotFound;
    values.erase(value);
    return ErrorSuccess;
}

std::u16string RegistryTree::fullName(RegistryKeyId id) const
{
    std::u16string name;
    for (; id != Root; id = find(id)->parent)
        name.insert(0, u'\\' + find(id)->name);
    return rootName + name;
}

} // namespace Platform
