#include "systemutilities/path_names.h"

#include "platform/platform.h"

#include <algorithm>

namespace Halden::SystemUtilities
{

namespace
{

constexpr auto None = std::wstring::npos;
constexpr wchar_t LongPathPrefix[] = L"\\\\?\\";
constexpr std::size_t LongPathPrefixLength = 4;

wchar_t separator()
{
    return Platform::platform().separator;
}

bool hasDrives()
{
    return separator() == L'\\';
}

/// Where the extension starts; the end of the path when it has none.
std::size_t extensionStart(const std::wstring& path)
{
    const std::size_t dot = path.rfind(L'.');
    const std::size_t last = path.rfind(separator());
    if (dot == None || (last != None && dot < last))
        return path.size();
    return dot;
}

} // namespace

void AddTrailingBackslash(std::wstring& path)
{
    if (!path.empty() && !path.ends_with(separator()))
        path += separator();
}

std::wstring GetDirectory(const std::wstring& path)
{
    const std::size_t last = path.rfind(separator());
    return last == None ? std::wstring() : path.substr(0, last);
}

std::wstring GetFileName(const std::wstring& path)
{
    const std::size_t last = path.rfind(separator());
    return last == None ? path : path.substr(last + 1);
}

std::wstring GetExtension(const std::wstring& path)
{
    return path.substr(extensionStart(path));
}

std::wstring RemoveExtension(const std::wstring& path)
{
    return path.substr(0, extensionStart(path));
}

std::wstring InsertBeforeExtension(const std::wstring& path, wchar_t separator, const std::wstring& text)
{
    return RemoveExtension(path) + separator + text + GetExtension(path);
}

std::wstring InsertNumberBeforeExtension(const std::wstring& path, wchar_t separator, int number)
{
    return InsertBeforeExtension(path, separator, std::to_wstring(number));
}

bool IsAbsolutePath(const std::wstring& path)
{
    if (!hasDrives())
        return path.starts_with(separator());
    return path.size() >= 3 && (path.starts_with(L"\\\\") || (path[1] == L':' && path[2] == L'\\'));
}

bool IsDriveRoot(const std::wstring& path)
{
    if (!hasDrives() || path.size() < 2 || path.size() > 3)
        return false;
    return path[1] == L':' && (path.size() == 2 || path[2] == L'\\');
}

bool IsUncShareRoot(const std::wstring& path)
{
    if (!hasDrives() || path.size() < 5 || !path.starts_with(L"\\\\"))
        return false;
    const std::size_t third = path.find(L'\\', 2);
    if (third == None || third == 2)
        return false;
    const std::size_t fourth = path.find(L'\\', third + 1);
    return fourth == None || fourth == path.size() - 1;
}

bool IsRootPath(const std::wstring& path)
{
    if (!hasDrives())
        return path.size() == 1 && path[0] == separator();
    return IsDriveRoot(path) || IsUncShareRoot(path);
}

std::wstring StripLongPathPrefix(const std::wstring& path)
{
    constexpr std::size_t Colon = LongPathPrefixLength + 1;
    if (hasDrives() && path.starts_with(LongPathPrefix) && path.size() > Colon && path[Colon] == L':')
        return path.substr(LongPathPrefixLength);
    return path;
}

} // namespace Halden::SystemUtilities
