#pragma once

#include <cstdint>
#include <string>

namespace Platform
{

// Pure path arithmetic for systems without the shell's own. `separator` is what ends a folder.

/// `file` resolved against `folder`: "." and ".." are taken out, a ".." never climbs above the root, a separator at the
/// end stays. A `file` that starts at a root stands alone.
std::wstring combinePathText(const std::wstring& folder, const std::wstring& file, wchar_t separator);

/// A path that has more than `size` - 1 characters, cut to as many: the start of it, "...", separator and file name.
/// The name itself is cut with "..." at its end when it does not fit.
std::wstring compactPathText(const std::wstring& path, std::uint32_t size, wchar_t separator);

/// Whether a file name matches a pattern of '*' and '?', whatever the case of its letters. "*.*" matches every name.
/// Several patterns are parted by ';'.
bool matchesPatternText(const std::wstring& name, const std::wstring& pattern);

/// The last part of a path: what stands behind the last separator that something stands behind.
std::wstring fileNameText(const std::wstring& path, wchar_t separator);

/// A path without its last part and the separator before it; the root stays.
std::wstring removeFileSpecText(const std::wstring& path, wchar_t separator);

/// `more` below `path`, whether or not `more` starts with separators; "." and ".." are taken out.
std::wstring appendPathText(const std::wstring& path, const std::wstring& more, wchar_t separator);

} // namespace Platform
