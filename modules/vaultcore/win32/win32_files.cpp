#include "vaultcore/win32/win32_files.h"

#include <vector>

namespace VaultCore
{
namespace
{

FailureCause causeOf(DWORD error)
{
    switch (error)
    {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_DIRECTORY:
        return FailureCause::Missing;
    case ERROR_ACCESS_DENIED:
    case ERROR_PRIVILEGE_NOT_HELD:
        return FailureCause::Denied;
    case ERROR_WRITE_PROTECT:
        return FailureCause::ReadOnlyPlace;
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_USER_MAPPED_FILE:
    case ERROR_DELETE_PENDING:
        return FailureCause::InUse;
    case ERROR_DIR_NOT_EMPTY:
        return FailureCause::NotEmpty;
    case ERROR_CANT_ACCESS_FILE:
        return FailureCause::LinkOnTheWay;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return FailureCause::Full;
    case ERROR_FILE_TOO_LARGE:
        return FailureCause::TooLarge;
    case ERROR_IO_DEVICE:
    case ERROR_CRC:
    case ERROR_GEN_FAILURE:
    case ERROR_NOT_READY:
        return FailureCause::Device;
    case ERROR_FILENAME_EXCED_RANGE:
        return FailureCause::NameTooLong;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
        return FailureCause::NameTaken;
    default:
        return FailureCause::Other;
    }
}

std::wstring systemText(DWORD error)
{
    wchar_t text[512] = {};
    const DWORD flags = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
    DWORD length = FormatMessageW(flags, nullptr, error, 0, text, static_cast<DWORD>(std::size(text)), nullptr);
    while (length > 0 && (text[length - 1] == L'\n' || text[length - 1] == L'\r'))
        --length;
    return std::wstring(text, length);
}

/// Path of an open file in its volume, with every link resolved.
std::wstring pathInVolume(HANDLE file)
{
    for (const std::size_t bytes : {std::size_t{2048}, std::size_t{131072}})
    {
        std::vector<std::uint64_t> storage(bytes / sizeof(std::uint64_t));
        auto* info = reinterpret_cast<FILE_NAME_INFO*>(storage.data());
        if (GetFileInformationByHandleEx(file, FileNameInfo, info, static_cast<DWORD>(bytes)))
            return std::wstring(info->FileName, info->FileNameLength / sizeof(wchar_t));
        if (GetLastError() != ERROR_MORE_DATA && GetLastError() != ERROR_BAD_LENGTH)
            break;
    }
    throwError(GetLastError());
}

DWORD volumeOf(HANDLE file)
{
    BY_HANDLE_FILE_INFORMATION data = {};
    checked(GetFileInformationByHandle(file, &data));
    return data.dwVolumeSerialNumber;
}

bool sameText(const std::wstring& left, const std::wstring& right)
{
    return CompareStringOrdinal(left.data(), static_cast<int>(left.size()), right.data(),
                                static_cast<int>(right.size()), TRUE) == CSTR_EQUAL;
}

FileHandle openPath(const std::wstring& path, DWORD access, DWORD share)
{
    const DWORD flags = FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT;
    FileHandle file(CreateFileW(extended(path).c_str(), access, share, nullptr, OPEN_EXISTING, flags, nullptr));
    if (file.get() == INVALID_HANDLE_VALUE)
        throwError(GetLastError());
    return file;
}

FILE_BASIC_INFO basicInfo(HANDLE file)
{
    FILE_BASIC_INFO info = {};
    checked(GetFileInformationByHandleEx(file, FileBasicInfo, &info, sizeof info));
    return info;
}

void setAttributes(HANDLE file, DWORD attributes)
{
    FILE_BASIC_INFO info = {}; // times of 0 stay as they are
    info.FileAttributes = attributes != 0 ? attributes : FILE_ATTRIBUTE_NORMAL;
    checked(SetFileInformationByHandle(file, FileBasicInfo, &info, sizeof info));
}

std::uint64_t ticksOf(const FILETIME& time)
{
    return (std::uint64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime;
}

FileKind kindOf(HANDLE file, DWORD attributes)
{
    const bool folder = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0)
    {
        FILE_ATTRIBUTE_TAG_INFO tag = {};
        checked(GetFileInformationByHandleEx(file, FileAttributeTagInfo, &tag, sizeof tag));
        // Other reparse points are a storage service's files: they are what their name says.
        if (IsReparseTagNameSurrogate(tag.ReparseTag))
            return folder ? FileKind::FolderLink : FileKind::Link;
    }
    return folder ? FileKind::Folder : FileKind::File;
}

} // namespace

FileHandle::~FileHandle()
{
    if (value_ != INVALID_HANDLE_VALUE)
        CloseHandle(value_);
}

void throwError(DWORD error)
{
    throw FileFailure(causeOf(error), error, systemText(error));
}

void checked(BOOL result)
{
    if (!result)
        throwError(GetLastError());
}

std::wstring extended(const std::wstring& path)
{
    if (path.starts_with(LR"(\\?\)"))
        return path;
    if (path.starts_with(LR"(\\)"))
        return LR"(\\?\UNC)" + path.substr(1);
    return LR"(\\?\)" + path;
}

std::wstring pathOf(const Place& place)
{
    // The root of a drive keeps its separator, or it would be the drive's current folder.
    return place.below.empty() ? place.root + L'\\' : place.root + L'\\' + place.below;
}

FileHandle openName(const Place& place, DWORD access, DWORD share)
{
    FileHandle file = openPath(pathOf(place), access, share);
    checkWay(file.get(), place);
    return file;
}

void checkWay(HANDLE file, const Place& place)
{
    const auto first = place.below.find(L'\\');
    if (first == std::wstring::npos)
        return;
    // The way below the entry has to be the one that was listed: the entry's own folder, then the same names.
    const Place entry{place.root, place.below.substr(0, first)};
    const FileHandle top = openPath(pathOf(entry), FILE_READ_ATTRIBUTES, ShareAll);
    if (kindOf(top.get(), basicInfo(top.get()).FileAttributes) != FileKind::Folder)
        throwError(ERROR_CANT_ACCESS_FILE);
    if (!sameText(pathInVolume(file), pathInVolume(top.get()) + place.below.substr(first)))
        throwError(ERROR_CANT_ACCESS_FILE);
    if (volumeOf(file) != volumeOf(top.get()))
        throwError(ERROR_CANT_ACCESS_FILE);
}

FileInfo infoOf(HANDLE file)
{
    BY_HANDLE_FILE_INFORMATION data = {};
    checked(GetFileInformationByHandle(file, &data));
    FileInfo info;
    info.kind = kindOf(file, data.dwFileAttributes);
    if (info.kind == FileKind::File)
        info.size = (std::uint64_t{data.nFileSizeHigh} << 32) | data.nFileSizeLow;
    info.names = data.nNumberOfLinks;
    info.identity = {data.dwVolumeSerialNumber, (std::uint64_t{data.nFileIndexHigh} << 32) | data.nFileIndexLow};
    info.modified = ticksOf(data.ftLastWriteTime);
    info.created = ticksOf(data.ftCreationTime);
    info.attributes = data.dwFileAttributes;
    return info;
}

bool unprotect(HANDLE file)
{
    const DWORD attributes = basicInfo(file).FileAttributes;
    if ((attributes & FILE_ATTRIBUTE_READONLY) == 0)
        return false;
    setAttributes(file, attributes & ~DWORD{FILE_ATTRIBUTE_READONLY});
    return true;
}

void protect(HANDLE file)
{
    setAttributes(file, basicInfo(file).FileAttributes | FILE_ATTRIBUTE_READONLY);
}

void renameOpen(HANDLE file, const Place& place, const std::wstring& name)
{
    const std::wstring target = extended(pathOf(childOf(parentOf(place), name)));
    const std::size_t bytes = target.size() * sizeof(wchar_t);
    std::vector<std::uint64_t> storage((sizeof(FILE_RENAME_INFO) + bytes) / sizeof(std::uint64_t) + 1);
    auto* info = reinterpret_cast<FILE_RENAME_INFO*>(storage.data());
    info->FileNameLength = static_cast<DWORD>(bytes);
    target.copy(info->FileName, target.size());
    const auto size = static_cast<DWORD>(storage.size() * sizeof(std::uint64_t));
    checked(SetFileInformationByHandle(file, FileRenameInfo, info, size));
}

void removeOpen(HANDLE file)
{
    FILE_DISPOSITION_INFO info = {};
    info.DeleteFile = TRUE;
    checked(SetFileInformationByHandle(file, FileDispositionInfo, &info, sizeof info));
}

} // namespace VaultCore
