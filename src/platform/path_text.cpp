#include "platform/path_text.h"

#include <algorithm>
#include <cwctype>
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

namespace
{

bool matchesOne(const wchar_t* name, const wchar_t* pattern, const wchar_t* end)
{
    for (; pattern != end; ++pattern, ++name)
    {
        if (*pattern == L'*')
        {
            for (; *name; ++name)
                if (matchesOne(name, pattern + 1, end))
                    return true;
            return pattern + 1 == end || matchesOne(name, pattern + 1, end);
        }
        if (!*name || (*pattern != L'?' && std::towupper(static_cast<std::wint_t>(*pattern)) !=
                                               std::towupper(static_cast<std::wint_t>(*name))))
            return false;
    }
    return !*name;
}

} // namespace

bool matchesPatternText(const std::wstring& name, const std::wstring& pattern)
{
    if (pattern == L"*.*")
        return true;
    const wchar_t* const last = pattern.c_str() + pattern.size();
    for (const wchar_t* start = pattern.c_str(); start <= last;)
    {
        while (*start == L' ')
            ++start;
        const wchar_t* const end = std::find(start, last, L';');
        if (start != end && matchesOne(name.c_str(), start, end))
            return true;
        start = end + 1;
    }
    return false;
}

std::wstring fileNameText(const std::wstring& path, wchar_t separator)
{
    const auto ends = [separator](wchar_t character)
    { return character == separator || character == L'/' || (separator == L'\\' && character == L':'); };
    std::size_t start = 0;
    for (std::size_t i = 0; i + 1 < path.size(); ++i)
        if (ends(path[i]) && (path[i + 1] == L':' || !ends(path[i + 1])))
            start = i + 1;
    return path.substr(start);
}

std::wstring removeFileSpecText(const std::wstring& path, wchar_t separator)
{
    std::size_t cut = 0;
    std::size_t i = 0;
    for (; i < 2 && i < path.size() && path[i] == separator; ++i)
        cut = i + 1;
    for (; i < path.size(); ++i)
    {
        if (path[i] == separator)
            cut = i;
        else if (separator == L'\\' && path[i] == L':')
            cut = i + 1 < path.size() && path[i + 1] == separator ? ++i + 1 : i + 1;
    }
    return path.substr(0, cut);
}

std::wstring appendPathText(const std::wstring& path, const std::wstring& more, wchar_t separator)
{
    // Two of them begin the name of another computer, which stands alone.
    if (separator == L'\\' && more.starts_with(L"\\\\"))
        return combinePathText(path, more, separator);
    const std::size_t start = std::min(more.find_first_not_of(separator), more.size());
    return combinePathText(path, more.substr(start), separator);
}

} // namespace Platform
