#include "statistics/files.h"

#include <windows.h>

#include <shlobj.h>

namespace StatisticsModule
{
namespace
{

HANDLE handleOf(std::intptr_t handle)
{
    return reinterpret_cast<HANDLE>(handle);
}

HANDLE openPrivate(const std::filesystem::path& file)
{
    // The folder of the user's own data hands its rights down, so the file is the user's own. Others may read, move and
    // remove it meanwhile.
    return CreateFileW(file.c_str(), GENERIC_READ | GENERIC_WRITE,
                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_ALWAYS,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

bool moveTo(HANDLE file, std::uint64_t position)
{
    LARGE_INTEGER distance = {};
    distance.QuadPart = static_cast<LONGLONG>(position);
    return SetFilePointerEx(file, distance, nullptr, FILE_BEGIN) != FALSE;
}

} // namespace

PrivateFile::PrivateFile(const std::filesystem::path& path)
{
    HANDLE file = openPrivate(path);
    if (file == INVALID_HANDLE_VALUE && GetLastError() == ERROR_PATH_NOT_FOUND)
    {
        std::error_code ignored;
        std::filesystem::create_directories(path.parent_path(), ignored);
        file = openPrivate(path);
    }
    if (file != INVALID_HANDLE_VALUE && GetFileType(file) != FILE_TYPE_DISK)
    {
        CloseHandle(file);
        return;
    }
    handle_ = reinterpret_cast<std::intptr_t>(file);
}

PrivateFile::~PrivateFile()
{
    if (!isOpen())
        return;
    // Closing a file gives up its lock some time later only. Without a lock this fails and does no harm.
    OVERLAPPED start = {};
    UnlockFileEx(handleOf(handle_), 0, 1, 0, &start);
    CloseHandle(handleOf(handle_));
}

bool PrivateFile::tryLock()
{
    OVERLAPPED start = {};
    const DWORD flags = LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY;
    return LockFileEx(handleOf(handle_), flags, 0, 1, 0, &start) != FALSE;
}

std::uint64_t PrivateFile::size() const
{
    LARGE_INTEGER size = {};
    return GetFileSizeEx(handleOf(handle_), &size) ? static_cast<std::uint64_t>(size.QuadPart) : 0;
}

std::string PrivateFile::end(std::size_t count) const
{
    const std::uint64_t all = size();
    std::string text(static_cast<std::size_t>(count < all ? count : all), '\0');
    DWORD got = 0;
    if (!moveTo(handleOf(handle_), all - text.size()) ||
        !ReadFile(handleOf(handle_), text.data(), static_cast<DWORD>(text.size()), &got, nullptr))
        return {};
    text.resize(got);
    return text;
}

bool PrivateFile::cutTo(std::uint64_t size)
{
    return moveTo(handleOf(handle_), size) && SetEndOfFile(handleOf(handle_)) != FALSE;
}

bool PrivateFile::append(std::string_view text)
{
    DWORD written = 0;
    const auto count = static_cast<DWORD>(text.size());
    return moveTo(handleOf(handle_), size()) && WriteFile(handleOf(handle_), text.data(), count, &written, nullptr) &&
           written == count;
}

std::filesystem::path userJournalFile()
{
    wchar_t folder[MAX_PATH] = {};
    const int wanted = CSIDL_LOCAL_APPDATA | CSIDL_FLAG_CREATE;
    if (FAILED(SHGetFolderPathW(nullptr, wanted, nullptr, SHGFP_TYPE_CURRENT, folder)))
        return {};
    return std::filesystem::path(folder) / L"jobrunner" / L"statistics.log";
}

std::uint32_t currentProcess()
{
    return GetCurrentProcessId();
}

} // namespace StatisticsModule
