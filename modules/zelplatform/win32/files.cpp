#include "zelplatform/files.h"

#include <atomic>
#include <windows.h>

#include <shlobj.h>

namespace ZelPlatform
{
namespace
{

class File
{
public:
    explicit File(HANDLE handle) : handle_(handle) {}
    ~File() { close(); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    bool isOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return handle_; }
    void close()
    {
        if (isOpen())
            CloseHandle(handle_);
        handle_ = INVALID_HANDLE_VALUE;
    }

private:
    HANDLE handle_;
};

/// The calls take 260 characters, and for folders twelve less, unless the path is absolute and says so.
std::wstring longPath(const std::wstring& path)
{
    constexpr std::size_t safeLength = 240;
    if (path.starts_with(L"\\\\?\\") || path.starts_with(L"\\\\.\\"))
        return path;
    const DWORD size = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    std::wstring full(size, L'\0');
    full.resize(GetFullPathNameW(path.c_str(), size, full.data(), nullptr));
    if (full.empty() || full.size() < safeLength)
        return path;
    if (full.starts_with(L"\\\\"))
        return L"\\\\?\\UNC" + full.substr(1);
    return L"\\\\?\\" + full;
}

void createFolders(const std::wstring& file)
{
    const std::size_t first = file.find(L'\\', 3);
    for (std::size_t end = first; end != std::wstring::npos; end = file.find(L'\\', end + 1))
        CreateDirectoryW(longPath(file.substr(0, end)).c_str(), nullptr);
}

/// A name beside the target that no other writer has: writers differ in process, or in number.
std::wstring temporaryName(const std::wstring& target)
{
    static std::atomic<unsigned> number{0};
    return target + L"." + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++number) + L".tmp";
}

bool writeFlushed(const std::wstring& path, std::string_view content)
{
    // The folder of the user's settings hands its rights down, so the file is the user's own.
    const File file(
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.isOpen())
        return false;
    DWORD written = 0;
    const auto size = static_cast<DWORD>(content.size());
    return WriteFile(file.get(), content.data(), size, &written, nullptr) && written == size &&
           FlushFileBuffers(file.get());
}

} // namespace

std::optional<std::string> readFile(const std::wstring& path, std::size_t limit)
{
    const File file(CreateFileW(longPath(path).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    LARGE_INTEGER size = {};
    if (!file.isOpen() || GetFileType(file.get()) != FILE_TYPE_DISK || !GetFileSizeEx(file.get(), &size))
        return std::nullopt;
    if (static_cast<ULONGLONG>(size.QuadPart) > limit)
        return std::nullopt;

    // Nobody may write while the file is open here, so its size is what it was.
    std::string content(static_cast<std::size_t>(size.QuadPart), '\0');
    DWORD count = 0;
    if (!ReadFile(file.get(), content.data(), static_cast<DWORD>(content.size()), &count, nullptr))
        return std::nullopt;
    if (count != content.size())
        return std::nullopt;
    return content;
}

bool replacePrivateFile(const std::wstring& path, std::string_view content)
{
    createFolders(path);
    const std::wstring target = longPath(path);
    const std::wstring temporary = longPath(temporaryName(path));
    if (writeFlushed(temporary, content) &&
        MoveFileExW(temporary.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        return true;
    DeleteFileW(temporary.c_str());
    return false;
}

std::wstring userCommentFile()
{
    wchar_t folder[MAX_PATH] = {};
    if (FAILED(SHGetFolderPathW(nullptr, CSIDL_APPDATA | CSIDL_FLAG_CREATE, nullptr, SHGFP_TYPE_CURRENT, folder)))
        return std::wstring();
    return std::wstring(folder) + L"\\jobrunner\\sfx-comment.txt";
}

} // namespace ZelPlatform
