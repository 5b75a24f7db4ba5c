#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <string_view>

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

/// The names of one package: no two of them may be the same file, and none the folder of another.
class PackageNames
{
public:
    bool hasFile(std::wstring_view name) const { return files_.contains(foldedName(name)); }
    bool hasFolder(std::wstring_view name) const { return folders_.contains(foldedName(name)); }
    /// False, and nothing added, when the name cannot stand beside the others.
    bool addFile(std::wstring_view name);
    /// A folder without a file in it yet.
    void addFolder(std::wstring_view name) { folders_.insert(foldedName(name)); }

private:
    std::set<std::wstring> files_;
    std::set<std::wstring> folders_;
};

} // namespace VaultCore
