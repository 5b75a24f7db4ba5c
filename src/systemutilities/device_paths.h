#pragma once

#include <string>

// Paths of drives ("C:\a") and of the kernel's devices ("\Device\Name\a"), both of Windows: their separator is the
// backslash whatever the system. Where there are no drives every path but the empty one fails. Failures are
// `FileSystemException`, with the path and the last error. Any thread.

namespace Halden::SystemUtilities
{

/// The device behind the drive of a path, then the rest of the path. An empty path gives the empty string.
std::wstring DevicePathFromDosPath(const std::wstring& path);
/// The path on the drive from A to Y whose device it is. An empty path gives the empty string.
std::wstring DosPathFromDevicePath(const std::wstring& path);

} // namespace Halden::SystemUtilities
