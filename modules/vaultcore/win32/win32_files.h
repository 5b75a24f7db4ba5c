#pragma once

#include "vaultcore/file_failure.h"
#include "vaultcore/file_system.h"

#include <utility>
#include <windows.h>

namespace VaultCore
{

/// Owns a file handle.
class FileHandle
{
public:
    explicit FileHandle(HANDLE value) : value_(value) {}
    FileHandle(FileHandle&& other) noexcept : value_(std::exchange(other.value_, INVALID_HANDLE_VALUE)) {}
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(FileHandle&& other) noexcept
    {
        std::swap(value_, other.value_);
        return *this;
    }
    ~FileHandle();
    HANDLE get() const { return value_; }

private:
    HANDLE value_;
};

inline constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// The one place where system codes become the engine's causes.
[[noreturn]] void throwError(DWORD error);
/// Throws with `GetLastError` when a call failed.
void checked(BOOL result);

/// Path in the form that has no limit of 260 characters and no reserved names.
std::wstring extended(const std::wstring& path);
std::wstring pathOf(const Place& place);

/// Opens the name itself, never the target of a link, and makes sure that no folder in `below` was exchanged for a
/// link meanwhile.
FileHandle openName(const Place& place, DWORD access, DWORD share);

/// The same check for a file that was opened by its path: it is where its place says.
void checkWay(HANDLE file, const Place& place);

FileInfo infoOf(HANDLE file);
/// Takes the read-only attribute off and tells whether it was there. Needs FILE_WRITE_ATTRIBUTES.
bool unprotect(HANDLE file);
void protect(HANDLE file);
/// Gives an open file another name in its folder. Nothing is replaced. Needs DELETE.
void renameOpen(HANDLE file, const Place& place, const std::wstring& name);
/// The name goes when the handle is closed. Needs DELETE.
void removeOpen(HANDLE file);

/// Opens the file for overwriting, and for nobody else.
std::unique_ptr<IWipeFile> openWipeFile(const Place& place);
std::unique_ptr<IReadFile> openReadFile(const Place& place);
std::unique_ptr<INewFile> createNewFile(const Place& place);
void flushNewFiles(const std::vector<INewFile*>& files);

/// The last segment of `text` as a name that every program here can open.
std::wstring safeLeafName(const std::wstring& text);

} // namespace VaultCore
