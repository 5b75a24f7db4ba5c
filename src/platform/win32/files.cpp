#include "platform/win32/concerns.h"

#include <windows.h>

#include <shlwapi.h>
#include <sys/stat.h>

#include <algorithm>

namespace Platform
{

namespace
{

static_assert(GenericRead == GENERIC_READ && OpenExisting == OPEN_EXISTING);
static_assert(ChangeFileName == FILE_NOTIFY_CHANGE_FILE_NAME && ChangeAttributes == FILE_NOTIFY_CHANGE_ATTRIBUTES &&
              ChangeLastWrite == FILE_NOTIFY_CHANGE_LAST_WRITE);
static_assert(AttributeDirectory == FILE_ATTRIBUTE_DIRECTORY);

void take(const WIN32_FIND_DATAW& data, FoundFile& found)
{
    found.name = data.cFileName;
    found.attributes = data.dwFileAttributes;
}

class Win32Files : public Files
{
public:
    Handle open(const std::wstring& path, std::uint32_t access, std::uint32_t share, std::uint32_t disposition,
                std::uint32_t flags) override
    {
        return CreateFileW(path.c_str(), access, share, nullptr, disposition, flags, nullptr);
    }

    Handle findFirstChange(const std::wstring& folder, bool subtree, std::uint32_t filter) override
    {
        return FindFirstChangeNotificationW(folder.c_str(), subtree, filter);
    }

    void findCloseChange(Handle handle) override { FindCloseChangeNotification(handle); }

    Handle findFirst(const std::wstring& pattern, FoundFile& found) override
    {
        WIN32_FIND_DATAW data{};
        const Handle search = FindFirstFileW(pattern.c_str(), &data);
        if (search != InvalidHandle)
            take(data, found);
        return search;
    }

    bool findNext(Handle search, FoundFile& found) override
    {
        WIN32_FIND_DATAW data{};
        if (!FindNextFileW(search, &data))
            return false;
        take(data, found);
        return true;
    }

    void findClose(Handle search) override { FindClose(search); }

    bool modificationTime(const std::wstring& path, std::int64_t& seconds) override
    {
        struct _stat64 status = {};
        if (_wstat64(path.c_str(), &status) != 0)
            return false;
        seconds = status.st_mtime;
        return true;
    }

    bool matches(const std::wstring& file, const std::wstring& pattern) override
    {
        return PathMatchSpecW(file.c_str(), pattern.c_str());
    }

    std::wstring fileName(const std::wstring& path) override { return PathFindFileNameW(path.c_str()); }

    std::wstring removeFileSpec(const std::wstring& path) override
    {
        std::wstring result = path;
        PathRemoveFileSpecW(result.data());
        return result.c_str();
    }

    std::wstring append(const std::wstring& path, const std::wstring& more) override
    {
        std::wstring result = path;
        result.resize(std::max<std::size_t>(path.size(), MAX_PATH));
        PathAppendW(result.data(), more.c_str());
        return result.c_str();
    }
};

} // namespace

Files& win32Files()
{
    static Win32Files files;
    return files;
}

} // namespace Platform
