#include "platform/win32/concerns.h"

#include <windows.h>

#include <shlwapi.h>

#include <algorithm>
#include <array>

namespace Platform
{

namespace
{

static_assert(AttributeReadOnly == FILE_ATTRIBUTE_READONLY && AttributeDirectory == FILE_ATTRIBUTE_DIRECTORY &&
              AttributeNormal == FILE_ATTRIBUTE_NORMAL && InvalidAttributes == INVALID_FILE_ATTRIBUTES);
static_assert(ErrorInsufficientBuffer == ERROR_INSUFFICIENT_BUFFER);

class Win32Paths : public Paths
{
public:
    std::wstring programFileName(std::uint32_t size) override
    {
        std::wstring name(size, L'\0');
        const DWORD length = GetModuleFileNameW(nullptr, name.data(), size);
        // A name that is cut off fills the buffer, on old systems without a terminator.
        name.resize(length < size ? length : std::max(size, 1U) - 1);
        return name;
    }

    std::wstring windowsDirectory(std::uint32_t size) override
    {
        std::wstring directory(size, L'\0');
        const UINT length = GetWindowsDirectoryW(directory.data(), size);
        directory.resize(length < size ? length : 0);
        return directory;
    }

    bool canonicalize(const std::wstring& path, std::wstring& canonical) override
    {
        canonical.clear();
        // The call knows no size, and not every Windows refuses what its result has no room for.
        if (path.size() >= MAX_PATH)
        {
            SetLastError(ERROR_FILENAME_EXCED_RANGE);
            return false;
        }
        std::array<wchar_t, MAX_PATH + 2> buffer{};
        const bool done = PathCanonicalizeW(buffer.data(), path.c_str());
        if (done)
            canonical = buffer.data();
        return done;
    }

    std::uint32_t longPathName(const std::wstring& path, wchar_t* buffer, std::uint32_t size) override
    {
        // Not every Windows keeps within its own buffer when a long path does not exist.
        if (path.size() >= MAX_PATH && attributes(path) == InvalidAttributes)
            return 0;
        return GetLongPathNameW(path.c_str(), buffer, size);
    }
    std::uint32_t shortPathName(const std::wstring& path, wchar_t* buffer, std::uint32_t size) override
    {
        return GetShortPathNameW(path.c_str(), buffer, size);
    }
    std::uint32_t queryDosDevice(const std::wstring& name, wchar_t* buffer, std::uint32_t size) override
    {
        return QueryDosDeviceW(name.c_str(), buffer, size);
    }

    std::uint32_t attributes(const std::wstring& path) override { return GetFileAttributesW(path.c_str()); }
    bool setAttributes(const std::wstring& path, std::uint32_t attributes) override
    {
        return SetFileAttributesW(path.c_str(), attributes);
    }
};

} // namespace

Paths& win32Paths()
{
    static Win32Paths concern;
    return concern;
}

} // namespace Platform
