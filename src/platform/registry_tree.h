#pragma once

#include "platform/registry.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Platform
{

/// Of one key for as long as the tree exists, in whatever copy of it: a key that is made again has another one.
using RegistryKeyId = std::uint64_t;

inline constexpr char16_t LinkValueName[] = u"SymbolicLinkValue"; ///< of a link: where it leads

struct RegistryValue
{
    std::u16string name;
    std::uint32_t type = 0;
    std::vector<std::uint8_t> data;

    bool operator==(const RegistryValue&) const = default;
};

struct RegistryTreeKey
{
    RegistryKeyId parent = 0;
    std::u16string name; ///< as it was first written
    bool isLink = false;
    std::map<std::u16string, RegistryKeyId> keys; ///< by folded name
    std::vector<RegistryValue> values;            ///< as they were made, one after the other

    bool operator==(const RegistryTreeKey&) const = default;
};

/// The keys and values of one user, as a plain value that can be copied and compared. Names and paths are 16-bit units
/// without nulls; operations give the results of `Registry`, and change nothing unless they succeed.
class RegistryTree
{
public:
    static constexpr RegistryKeyId Root = 1;

    RegistryTree();

    /// Null when there is no such key, or no longer.
    const RegistryTreeKey* find(RegistryKeyId id) const;
    /// Null when the key has no such value.
    const RegistryValue* findValue(RegistryKeyId id, std::u16string_view name) const;

    /// Follows links, but for one at the end of the path when `opensLink` is set.
    std::uint32_t open(RegistryKeyId from, std::u16string_view path, bool opensLink, RegistryKeyId& found) const;
    /// The same, and makes what is missing. `options` as with `Registry::createKey`.
    std::uint32_t create(RegistryKeyId from, std::u16string_view path, std::uint32_t options, RegistryKeyId& created);
    /// Neither the root nor a key with keys below it: that is `ErrorAccessDenied`.
    std::uint32_t remove(RegistryKeyId id);
    std::uint32_t setValue(RegistryKeyId id, RegistryValue value);
    std::uint32_t removeValue(RegistryKeyId id, std::u16string_view name);

    /// The full name of a key that exists: `rootName` and what is below it.
    std::u16string fullName(RegistryKeyId id) const;
    /// What every full name of this tree starts with, and so the target of a link.
    static constexpr char16_t rootName[] = u"\\REGISTRY\\USER\\Current";

    // For whoever writes a tree down and reads it again.

    RegistryKeyId newest() const { return newest_; }
    void setNewest(RegistryKeyId newest) { newest_ = newest; }
    /// A key below another one. False when it cannot be there.
    bool add(RegistryKeyId id, RegistryKeyId parent, std::u16string_view name, bool isLink);
    /// A value whose name the key does not have yet, so that it need not be searched for. The result of `setValue`.
    std::uint32_t append(RegistryKeyId id, RegistryValue value);

    bool operator==(const RegistryTree&) const = default;

private:
    struct Walk;

    std::uint32_t walk(Walk& walk, bool opensLink) const;
    static std::uint32_t follow(const RegistryTreeKey& link, Walk& walk);
    std::uint32_t makeMissing(const Walk& walk, bool isLink, RegistryKeyId& created);

    std::map<RegistryKeyId, RegistryTreeKey> keys_;
    RegistryKeyId newest_ = Root;
};

} // namespace Platform
