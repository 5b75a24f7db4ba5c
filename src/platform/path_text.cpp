#include "platform/path_text.h"

#include <algorithm>
#include <vector>

namespace Platform
{

namespace
{

constexpr wchar_t Ellipsis[] = L"...";
constexpr std::size_t EllipsisLength = 3;

bool hasDrive(const std::wstring& path)
{
    return path.size() > 1 && path[1] == L':';
}

/// Number of characters of what a ".." does not take away: "/", "\", "\\", "C:" or "C:\".
std::size_t rootLength(const std::wstring& path, wchar_t separator)
{
    std::size_t length = separator == L'\\' && hasDrive(path) ? 2 : 0;
    const std::size_t most = length == 0 && separator == L'\\' ? 2 : length + 1;
    while (length < most && length < path.size() && path[length] == separator)
        ++length;
    return length;
}

std::wstring withoutDots(const std::wstring& path, wchar_t separator)
{
    const std::size_t root = rootLength(path, separator);
    std::vector<std::wstring> segments;
    for (std::size_t start = root; start < path.size();)
    {
        const std::size_t end = std::min(path.find(separator, start), path.size());
        const std::wstring segment = path.substr(start, end - start);
        start = end + 1;
        if (segment == L".." && !segments.empty())
            segments.pop_back();
        if (!segment.empty() && segment != L"." && segment != L"..")
            segments.push_back(segment);
    }
    std::wstring result = path.substr(0, root);
    for (std::size_t index = 0; index < segments.size(); ++index)
        result += (index > 0 ? std::wstring(1, separator) : std::wstring()) + segments[index];
    if (!segments.empty() && path.back() == separator)
        result += separator;
    return result.empty() ? std::wstring(1, separator) : result;
}

std::wstring withEllipsis(const std::wstring& text, std::size_t length)
{
    if (text.size() <= length)
        return text;
    if (length <= EllipsisLength)
        return std::wstring(length, L'.');
    return text.substr(0, length - EllipsisLength) + Ellipsis;
}

} // namespace

std::wstring combinePathText(const std::wstring& folder, const std::wstring& file, wchar_t separator)
{
    const bool atRoot = !file.empty() && file[0] == separator;
    if (file.empty() || folder.empty())
        return withoutDots(folder + file, separator);
    if (separator == L'\\' && atRoot && !file.starts_with(L"\\\\") && hasDrive(folder))
        return withoutDots(folder.substr(0, 2) + file, separator);
    if (atRoot || (separator == L'\\' && hasDrive(file)))
        return withoutDots(file, separator);
    return withoutDots(folder.back() == separator ? folder + file : folder + separator + file, separator);
}

std::wstring compactPathText(const std::wstring& path, std::uint32_t size, wchar_t separator)
{
    if (path.size() < size)
        return path;
    const std::size_t room = size > 0 ? size - 1 : 0;
    const std::size_t end = path.rfind(separator);
    if (end == std::wstring::npos)
        return withEllipsis(path, room);

    const std::wstring name = path.substr(end + 1);
    const std::size_t needed = EllipsisLength + 1 + name.size();
    if (needed > room)
        return withEllipsis(Ellipsis + (separator + name), room);
    return path.substr(0, room - needed) + Ellipsis + separator + name;
}

} // namespace Platform
