#include "vaultcore/win32/win32_files.h"

namespace VaultCore
{
namespace
{

class Win32ReadFile final : public IReadFile
{
public:
    explicit Win32ReadFile(FileHandle file) : file_(std::move(file)) {}

    FileInfo info() override { return infoOf(file_.get()); }

    std::size_t read(std::span<std::uint8_t> bytes) override
    {
        std::size_t total = 0;
        while (total < bytes.size())
        {
            DWORD count = 0;
            const auto room = static_cast<DWORD>(bytes.size() - total);
            checked(ReadFile(file_.get(), bytes.data() + total, room, &count, nullptr));
            if (count == 0)
                break;
            total += count;
        }
        return total;
    }

    void seek(std::uint64_t offset) override
    {
        LARGE_INTEGER position = {};
        position.QuadPart = static_cast<LONGLONG>(offset);
        checked(SetFilePointerEx(file_.get(), position, nullptr, FILE_BEGIN));
    }

    // A file that is open in the usual way has no means for it.
    void forgetMemory() override {}

private:
    FileHandle file_;
};

/// A storage service's file: opened through the service, which brings the content.
FileHandle openThroughService(const Place& place)
{
    FileHandle file(CreateFileW(extended(pathOf(place)).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    if (file.get() == INVALID_HANDLE_VALUE)
        throwError(GetLastError());
    return file;
}

} // namespace

std::unique_ptr<IReadFile> openReadFile(const Place& place)
{
    // Nobody else may write meanwhile.
    FileHandle file = openName(place, GENERIC_READ, FILE_SHARE_READ);
    const FileInfo info = infoOf(file.get());
    if (info.kind != FileKind::File)
        throwError(ERROR_CANT_ACCESS_FILE);
    if ((info.attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0)
    {
        file = openThroughService(place);
        if (infoOf(file.get()).identity != info.identity)
            throwError(ERROR_CANT_ACCESS_FILE);
    }
    return std::make_unique<Win32ReadFile>(std::move(file));
}

} // namespace VaultCore
