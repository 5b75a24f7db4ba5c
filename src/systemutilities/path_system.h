#pragma once

#include <cstdint>
#include <string>

// What the system says of a path. A failure of which nothing else is said is a `FileSystemException` with the name of
// the failed call, the path and the last error. Any thread. The process itself calls none of these.

namespace Halden::SystemUtilities
{

/// Folder of the program, without a separator at its end. Names are cut at 259 characters.
std::wstring GetModuleDirectory();
/// File name of the program, without its folder.
std::wstring GetExecutableName();
/// The directory of Windows. Throws `std::runtime_error` when there is none.
std::wstring GetSystemRoot();
/// An absolute path as it stands, any other below the folder of the program.
std::wstring MakeAbsolutePath(const std::wstring& path);
/// The path without "." and "..", as far as its text tells. Empty on failure.
std::wstring CanonicalizePath(const std::wstring& path);
/// The full form of a path that has short names in it. The path has to exist.
std::wstring GetLongPath(const std::wstring& path);
/// The form of a path with short names. The path has to exist.
std::wstring GetShortPath(const std::wstring& path);

/// Adds the bits of `mask`, unless the path has one of them already.
void SetAttributeBits(const std::wstring& path, std::uint32_t mask);
/// Takes the bits of `mask` away. A path that does not exist is no error.
void ClearAttributeBits(const std::wstring& path, std::uint32_t mask);
void SetAttributes(const std::wstring& path, std::uint32_t attributes);
void SetReadOnly(const std::wstring& path);
void ClearReadOnly(const std::wstring& path);

} // namespace Halden::SystemUtilities
