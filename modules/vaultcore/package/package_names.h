#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace VaultCore
{

/// Longest name of a file inside a package, in bytes of UTF-8, and longest of its parts, in 16-bit units.
inline constexpr std::size_t LongestPackageName = 4096;
inline constexpr std::size_t LongestNamePart = 255;

/// Why a name (UTF-8, parts joined by '/') cannot be that of a file inside a package; nothing for a good one. A good
/// name means the same file below a folder on every system: no "..", no drive, no device, nothing that a system
/// changes or drops on its own.
std::optional<std::wstring> faultOfName(const std::string& name);

/// A part of a name made from the name of a file here: what must not be in it becomes '_'.
std::wstring packageNamePart(const std::wstring& name);

/// Names that differ only in what this changes are the same name.
std::wstring foldedName(std::wstring_view name);

/// The names of one package: no two of them may be the same file, and none the folder of another. They take about as
/// much memory as their letters, however deep they are.
class PackageNames
{
public:
    bool hasFile(std::wstring_view name) const;
    bool hasFolder(std::wstring_view name) const;
    /// False, and nothing added, when the name cannot stand beside the others.
    bool addFile(std::wstring_view name);
    /// A folder without a file in it yet, and those on the way to it.
    void addFolder(std::wstring_view name);

private:
    struct Entry
    {
        std::size_t number = 0;
        bool isFile = false;
    };
    /// A folded part of a name, in the folder of this number.
    using Key = std::pair<std::size_t, std::wstring>;

    static constexpr std::size_t Root = 0;

    const Entry* find(std::wstring_view name) const;
    bool canAdd(std::wstring_view name) const;
    void add(std::wstring_view name, bool isFile);

    std::map<Key, Entry> entries_;
};

} // namespace VaultCore
