#include "systemutilities/path_system.h"

#include "platform/paths.h"
#include "platform/platform.h"
#include "systemutilities/file_system_exception.h"
#include "systemutilities/path_names.h"
#include "systemutilities/shell_utilities.h"

#include <stdexcept>

namespace Halden::SystemUtilities
{

namespace
{

constexpr std::uint32_t BufferSize = 260;

Platform::Paths& paths()
{
    return Platform::platform().paths;
}

/// What `ask(buffer, size)` writes, by asking for the size first. A name that has grown in between is asked for again.
template <class Ask> std::wstring answerOf(const Ask& ask, const char* call, const std::wstring& path)
{
    std::wstring answer;
    std::uint32_t length = ask(nullptr, 0);
    while (length > answer.size())
    {
        answer.resize(length);
        length = ask(answer.data(), length);
    }
    if (length == 0)
        throw FileSystemException(call, path);
    answer.resize(length);
    return answer;
}

} // namespace

std::wstring GetModuleDirectory()
{
    return GetDirectory(paths().programFileName(BufferSize));
}

std::wstring GetExecutableName()
{
    return GetFileName(paths().programFileName(BufferSize));
}

std::wstring GetSystemRoot()
{
    std::wstring root = paths().windowsDirectory(BufferSize);
    if (root.empty())
        throw std::runtime_error("Cannot get the system root directory");
    return root;
}

std::wstring MakeAbsolutePath(const std::wstring& path)
{
    return IsAbsolutePath(path) ? path : JoinPath(GetModuleDirectory(), path);
}

std::wstring CanonicalizePath(const std::wstring& path)
{
    std::wstring canonical;
    return paths().canonicalize(path, canonical) ? canonical : std::wstring();
}

std::wstring GetLongPath(const std::wstring& path)
{
    return answerOf([&](wchar_t* buffer, std::uint32_t size) { return paths().longPathName(path, buffer, size); },
                    "GetLongPathName", path);
}

std::wstring GetShortPath(const std::wstring& path)
{
    return answerOf([&](wchar_t* buffer, std::uint32_t size) { return paths().shortPathName(path, buffer, size); },
                    "GetShortPathName", path);
}

void SetAttributeBits(const std::wstring& path, std::uint32_t mask)
{
    // Intended: a read that failed gives all bits, so that a missing path is left alone without an error.
    const std::uint32_t attributes = paths().attributes(path);
    if ((attributes & mask) == 0)
        SetAttributes(path, attributes | mask);
}

void ClearAttributeBits(const std::wstring& path, std::uint32_t mask)
{
    const std::uint32_t attributes = paths().attributes(path);
    if (attributes != Platform::InvalidAttributes && (attributes & mask) != 0)
        SetAttributes(path, attributes & ~mask);
}

void SetAttributes(const std::wstring& path, std::uint32_t attributes)
{
    if (!paths().setAttributes(path, attributes))
        throw FileSystemException("SetFileAttributes failed", path);
}

void SetReadOnly(const std::wstring& path)
{
    SetAttributeBits(path, Platform::AttributeReadOnly);
}

void ClearReadOnly(const std::wstring& path)
{
    ClearAttributeBits(path, Platform::AttributeReadOnly);
}

} // namespace Halden::SystemUtilities
