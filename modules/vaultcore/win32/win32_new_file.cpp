#include "vaultcore/parallel.h"
#include "vaultcore/win32/win32_files.h"

#include <algorithm>

namespace VaultCore
{
namespace
{

constexpr DWORD KeptAttributes = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
                                 FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
/// Beyond this the system's times are no times.
constexpr std::uint64_t LatestTime = 0x7FFFFFFFFFFFFFFF;
constexpr DWORD LargestWrite = DWORD{1} << 24;

LARGE_INTEGER timeOf(std::uint64_t ticks)
{
    LARGE_INTEGER time = {};
    time.QuadPart = ticks <= LatestTime ? static_cast<LONGLONG>(ticks) : 0;
    return time;
}

class Win32NewFile final : public INewFile
{
public:
    Win32NewFile(FileHandle file, Place place) : file_(std::move(file)), place_(std::move(place)) {}

    ~Win32NewFile() override
    {
        if (!published_)
            discard();
    }

    void write(std::span<const std::uint8_t> bytes) override
    {
        while (!bytes.empty())
        {
            DWORD written = 0;
            const auto length = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), LargestWrite));
            checked(WriteFile(file_.get(), bytes.data(), length, &written, nullptr));
            bytes = bytes.subspan(written);
        }
    }

    void cutTo(std::uint64_t size) override
    {
        LARGE_INTEGER position = {};
        position.QuadPart = static_cast<LONGLONG>(size);
        checked(SetFilePointerEx(file_.get(), position, nullptr, FILE_BEGIN));
        checked(SetEndOfFile(file_.get()));
    }

    void takeOver(const FileInfo& like) override
    {
        FILE_BASIC_INFO info = {}; // a time of 0 stays as it is
        info.LastWriteTime = timeOf(like.modified);
        info.CreationTime = timeOf(like.created);
        info.FileAttributes = like.attributes & KeptAttributes;
        if (info.FileAttributes == 0)
            info.FileAttributes = FILE_ATTRIBUTE_NORMAL;
        // What the place cannot keep stays at its own value.
        SetFileInformationByHandle(file_.get(), FileBasicInfo, &info, sizeof info);
    }

    FileInfo publish(const NativeText& name) override
    {
        flush();
        giveName(name);
        // Once more, for the name.
        flush();
        const FileInfo info = infoOf(file_.get());
        published_ = true;
        file_ = FileHandle(INVALID_HANDLE_VALUE);
        return info;
    }

    FileInfo rename(const NativeText& name) override
    {
        giveName(name);
        published_ = true;
        return infoOf(file_.get());
    }

    /// Returns when the device has content and name.
    void flush() const { checked(FlushFileBuffers(file_.get())); }

private:
    void giveName(const NativeText& name)
    {
        renameOpen(file_.get(), place_, name);
        place_ = childOf(parentOf(place_), name);
    }

    void discard() const
    {
        try
        {
            unprotect(file_.get());
            removeOpen(file_.get());
        }
        catch (const FileFailure&)
        {
            // The device is gone; a later job removes what it left.
        }
    }

    FileHandle file_;
    Place place_;
    bool published_ = false;
};

} // namespace

void flushNewFiles(const std::vector<INewFile*>& files)
{
    // A flush mostly waits. The flush of a whole volume is for administrators.
    inParallel(files.size(), [&](std::size_t i) { static_cast<const Win32NewFile*>(files[i])->flush(); });
}

std::unique_ptr<INewFile> createNewFile(const Place& place)
{
    const DWORD access = GENERIC_READ | GENERIC_WRITE | DELETE;
    FileHandle file(
        CreateFileW(extended(pathOf(place)).c_str(), access, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (file.get() == INVALID_HANDLE_VALUE)
        throwError(GetLastError());
    const HANDLE opened = file.get();
    auto made = std::make_unique<Win32NewFile>(std::move(file), place);
    checkWay(opened, place);
    return made;
}

} // namespace VaultCore
