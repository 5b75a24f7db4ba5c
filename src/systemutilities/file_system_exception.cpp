#include "systemutilities/file_system_exception.h"

#include "platform/handles.h"
#include "platform/narrow_text.h"
#include "platform/platform.h"
#include "platform/utf8.h"

#include <system_error>
#include <type_traits>

namespace Halden::SystemUtilities
{

namespace
{

using Path = std::experimental::filesystem::path;

/// The library's own text would have the paths in it as well.
std::string textWithoutPaths(const std::system_error& failure)
{
    return failure.std::system_error::what();
}

std::uint32_t lastError()
{
    return Platform::platform().handles.lastError();
}

std::error_code systemCode(std::uint32_t code)
{
    return {static_cast<int>(code), std::system_category()};
}

bool isSurrogate(wchar_t unit, unsigned first)
{
    return (static_cast<unsigned>(unit) & 0xFC00) == first;
}

/// UTF-16 with U+FFFD in place of each half of a pair that stands alone.
std::wstring withWholePairs(std::wstring text)
{
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        const bool isHigh = isSurrogate(text[i], 0xD800);
        if (isHigh && i + 1 < text.size() && isSurrogate(text[i + 1], 0xDC00))
            ++i;
        else if (isHigh || isSurrogate(text[i], 0xDC00))
            text[i] = L'\xFFFD';
    }
    return text;
}

// The library's own conversions fail on a name that is no valid text. Ours keep the name where paths are bytes; where
// they are wide, the library writes them as UTF-8 for its own text, whatever we do.

template <class Native = Path::string_type> Path pathOf(const std::wstring& text)
{
    if constexpr (std::is_same_v<Native, std::wstring>)
        return withWholePairs(text);
    else
        return Platform::toUtf8(text);
}

template <class Native> std::wstring wideText(const Native& path)
{
    if constexpr (std::is_same_v<Native, std::wstring>)
        return path;
    else
        return Platform::fromUtf8(path);
}

} // namespace

FileSystemException::FileSystemException(const std::string& message, const std::wstring& path)
    : FileSystemException(message, path, lastError())
{
}

FileSystemException::FileSystemException(const std::string& message, const std::wstring& first,
                                         const std::wstring& second)
    : FileSystemException(message, first, second, lastError())
{
}

FileSystemException::FileSystemException(const std::string& message, const std::wstring& path, std::uint32_t code)
    : filesystem_error(message, pathOf(path), systemCode(code)),
      text_(Platform::narrowThreadText(FileSystemException::GetWideMessage()))
{
}

FileSystemException::FileSystemException(const std::string& message, const std::wstring& first,
                                         const std::wstring& second, std::uint32_t code)
    : filesystem_error(message, pathOf(first), pathOf(second), systemCode(code)),
      text_(Platform::narrowThreadText(FileSystemException::GetWideMessage()))
{
}

FileSystemException::~FileSystemException() = default;

const char* FileSystemException::what() const noexcept
{
    return text_.c_str();
}

std::wstring FileSystemException::GetWideMessage() const
{
    const std::string base = textWithoutPaths(*this);
    const std::wstring message = base.empty() ? L"Unknown exception" : Platform::widenThreadText(base);
    return message + L' ' + wideText(path1().native()) + L' ' + wideText(path2().native());
}

} // namespace Halden::SystemUtilities
