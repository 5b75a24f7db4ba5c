#pragma once

#include "platform/messages.h"

#include <string>
#include <vector>

// Thin decisions around system calls. None of them raises: a failed call gives an empty or zero result.

namespace Halden::SystemUtilities
{

/// Every argument of the command line; the first is the program's own path.
std::vector<std::wstring> GetCommandLineArguments();
bool isVistaOrLater();
/// Brings a window to the front although another process owns the foreground. Thread of the window.
void ForceForegroundWindow(Platform::WindowHandle window);
/// Shortens a path to at most `maximum` characters, keeping the file's own name as far as it fits.
std::wstring compactPath(const std::wstring& path, unsigned maximum);
/// Folder of a path. One trailing separator is removed first. Empty when no separator is left.
std::wstring GetFolderOfPath(const std::wstring& path, bool keepBackslash);
/// Folder of a loaded module, or of the program for null, with its separator.
std::wstring GetModuleFolder(void* module);
/// An absolute path as it stands; any other resolved against `base`, or the current directory when that is empty.
std::wstring ResolveRelativePath(const std::wstring& relative, const std::wstring& base);
/// Joins two paths with one separator of this system. Only one separator is looked at on each side.
std::wstring JoinPath(const std::wstring& left, const std::wstring& right);
/// The same with this separator: paths of the registry have backslashes on every system.
std::wstring JoinPath(const std::wstring& left, const std::wstring& right, wchar_t separator);

} // namespace Halden::SystemUtilities
