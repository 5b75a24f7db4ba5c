#include "platform/path_text.h"
#include "platform/posix/concerns.h"
#include "platform/posix/error_numbers.h"
#include "platform/utf8.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

namespace Platform
{

namespace
{

constexpr wchar_t Separator = L'/';
constexpr mode_t AllMayWrite = S_IWUSR | S_IWGRP | S_IWOTH;

std::uint32_t fail(std::uint32_t error)
{
    posixHandles().setLastError(error);
    return 0;
}

/// False when it is not there, with the last error.
bool statusOf(const std::string& path, struct stat& status)
{
    if (stat(path.c_str(), &status) == 0)
        return true;
    fail(errorOf(errno, path));
    return false;
}

/// A file has one name here, neither a longer nor a shorter one.
std::uint32_t onlyName(const std::wstring& path, wchar_t* buffer, std::uint32_t size)
{
    struct stat status
    {
    };
    if (!statusOf(toUtf8(path), status))
        return 0;
    const auto length = static_cast<std::uint32_t>(path.size());
    if (length >= size)
        return length + 1;
    std::copy_n(path.c_str(), length + 1, buffer);
    return length;
}

class PosixPaths : public Paths
{
public:
    std::wstring programFileName(std::uint32_t size) override
    {
        std::wstring name = posixModules().fileName(nullptr);
        if (name.size() < size)
            return name;
        fail(ErrorInsufficientBuffer);
        return name.substr(0, size > 0 ? size - 1 : 0);
    }

    /// There is none.
    std::wstring windowsDirectory(std::uint32_t) override
    {
        fail(ErrorFileNotFound);
        return {};
    }

    bool canonicalize(const std::wstring& path, std::wstring& canonical) override
    {
        canonical = combinePathText(path, {}, Separator);
        return true;
    }

    std::uint32_t longPathName(const std::wstring& path, wchar_t* buffer, std::uint32_t size) override
    {
        return onlyName(path, buffer, size);
    }
    std::uint32_t shortPathName(const std::wstring& path, wchar_t* buffer, std::uint32_t size) override
    {
        return onlyName(path, buffer, size);
    }

    /// There are no drives.
    std::uint32_t queryDosDevice(const std::wstring&, wchar_t*, std::uint32_t) override
    {
        return fail(ErrorFileNotFound);
    }

    std::uint32_t attributes(const std::wstring& path) override
    {
        struct stat status
        {
        };
        if (!statusOf(toUtf8(path), status))
            return InvalidAttributes;
        const std::uint32_t kind = S_ISDIR(status.st_mode) ? AttributeDirectory : 0;
        const std::uint32_t access = (status.st_mode & AllMayWrite) == 0 ? AttributeReadOnly : 0;
        const std::uint32_t attributes = kind | access;
        return attributes == 0 ? AttributeNormal : attributes;
    }

    /// The other bits have no meaning here.
    bool setAttributes(const std::wstring& path, std::uint32_t attributes) override
    {
        const std::string name = toUtf8(path);
        struct stat status
        {
        };
        if (!statusOf(name, status))
            return false;
        const bool readOnly = (attributes & AttributeReadOnly) != 0;
        const bool isReadOnly = (status.st_mode & AllMayWrite) == 0;
        if (readOnly == isReadOnly)
            return true;
        const mode_t mode = status.st_mode & 07777;
        if (chmod(name.c_str(), readOnly ? mode & ~AllMayWrite : mode | S_IWUSR) == 0)
            return true;
        fail(errorOf(errno, name));
        return false;
    }
};

} // namespace

Paths& posixPaths()
{
    static PosixPaths concern;
    return concern;
}

} // namespace Platform
