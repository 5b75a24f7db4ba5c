#include "vaultcore/container/small_file.h"

#include "vaultcore/win32/win32_files.h"

namespace VaultCore
{
namespace
{

std::wstring fullPath(const std::wstring& path)
{
    std::wstring full(path.size() + MAX_PATH, L'\0');
    DWORD size = 0;
    while ((size = GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr)) > full.size())
        full.resize(size);
    if (size == 0)
        throwError(GetLastError());
    full.resize(size);
    return extended(full);
}

FileHandle openFile(const std::wstring& path, DWORD access, DWORD share, DWORD how, DWORD flags)
{
    FileHandle file(CreateFileW(fullPath(path).c_str(), access, share, nullptr, how, flags, nullptr));
    if (file.get() == INVALID_HANDLE_VALUE)
        throwError(GetLastError());
    return file;
}

} // namespace

SmallFile readSmallFile(const std::wstring& path, std::size_t limit)
{
    // The flag opens folders too, so that one can be told from a file that is not there.
    const FileHandle file = openFile(path, GENERIC_READ, ShareAll, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
    if (GetFileType(file.get()) != FILE_TYPE_DISK)
        return {SmallFileKind::NoPlainFile, {}};
    BY_HANDLE_FILE_INFORMATION data = {};
    checked(GetFileInformationByHandle(file.get(), &data));
    if ((data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return {SmallFileKind::Folder, {}};
    if (data.nFileSizeHigh != 0 || data.nFileSizeLow > limit)
        return {SmallFileKind::TooLarge, {}};
    SecureBytes room(limit + 1);
    DWORD size = 0;
    checked(ReadFile(file.get(), room.bytes().data(), static_cast<DWORD>(room.size()), &size, nullptr));
    if (size > limit)
        return {SmallFileKind::TooLarge, {}};
    return {SmallFileKind::Content, SecureBytes(room.bytes().first(size))};
}

void writeSecretFile(const std::wstring& path, ByteView bytes)
{
    const FileHandle file = openFile(path, GENERIC_WRITE | DELETE, 0, CREATE_NEW, FILE_ATTRIBUTE_NORMAL);
    try
    {
        DWORD written = 0;
        checked(WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr));
        if (written != bytes.size())
            throwError(ERROR_DISK_FULL);
        checked(FlushFileBuffers(file.get()));
    }
    catch (const FileFailure&)
    {
        removeOpen(file.get());
        throw;
    }
}

} // namespace VaultCore
