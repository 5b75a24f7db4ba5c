#pragma once

#include <string>

// What can be said of a path from its text alone. Nothing here touches the disk or fails.
//
// A separator is what ends a folder on this system, as for `JoinPath`: the backslash on Windows, where every comparison
// is one of exact characters. Drives, shares and the prefix of long paths are a matter of Windows: where the separator
// is the slash, an absolute path starts with it, the root is "/" and no path has a drive or a share.

namespace Halden::SystemUtilities
{

/// Appends the separator, unless the path is empty or ends in one.
void AddTrailingBackslash(std::wstring& path);
/// What stands before the last separator; empty when there is none.
std::wstring GetDirectory(const std::wstring& path);
/// What stands behind the last separator; the whole path when there is none.
std::wstring GetFileName(const std::wstring& path);
/// From the last dot of the file name on, with the dot. Empty when there is none.
std::wstring GetExtension(const std::wstring& path);
/// The path without what `GetExtension` gives.
std::wstring RemoveExtension(const std::wstring& path);
/// "a.txt" with '_' and "b" is "a_b.txt".
std::wstring InsertBeforeExtension(const std::wstring& path, wchar_t separator, const std::wstring& text);
/// "a.txt" with '_' and -1 is "a_-1.txt".
std::wstring InsertNumberBeforeExtension(const std::wstring& path, wchar_t separator, int number);
/// At least three characters that start with "\\", or with a letter, ":" and "\".
bool IsAbsolutePath(const std::wstring& path);
/// "C:" or "C:\".
bool IsDriveRoot(const std::wstring& path);
/// "\\server\share" or "\\server\share\". Intended: neither the server nor the share is looked at, so that
/// "\\server\" is one too.
bool IsUncShareRoot(const std::wstring& path);
/// `IsDriveRoot` or `IsUncShareRoot`.
bool IsRootPath(const std::wstring& path);
/// Takes "\\?\" away from before a drive; any other path stays as it is.
std::wstring StripLongPathPrefix(const std::wstring& path);

} // namespace Halden::SystemUtilities
