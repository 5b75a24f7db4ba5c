#include "vaultcore/win32/win32_files.h"

#include <algorithm>
#include <winioctl.h>

namespace VaultCore
{
namespace
{

/// The largest cluster that the end of a file is padded to.
constexpr std::uint64_t LargestCluster = 65536;
constexpr std::size_t RangesPerQuery = 256;

class Win32WipeFile final : public IWipeFile
{
public:
    Win32WipeFile(FileHandle file, Place place) : file_(std::move(file)), place_(std::move(place)) {}

    FileInfo info() override { return infoOf(file_.get()); }

    std::vector<Extent> extents() override
    {
        FILE_STANDARD_INFO standard = {};
        checked(GetFileInformationByHandleEx(file_.get(), FileStandardInfo, &standard, sizeof standard));
        FILE_BASIC_INFO basic = {};
        checked(GetFileInformationByHandleEx(file_.get(), FileBasicInfo, &basic, sizeof basic));
        const auto size = static_cast<std::uint64_t>(standard.EndOfFile.QuadPart);
        if (size == 0)
            return {};
        if ((basic.FileAttributes & FILE_ATTRIBUTE_SPARSE_FILE) != 0)
            return rangesOf(size);
        // Up to the end of what the file occupies, but no further than one cluster from its end.
        const auto occupied = static_cast<std::uint64_t>(standard.AllocationSize.QuadPart);
        const std::uint64_t limit = (size + LargestCluster - 1) / LargestCluster * LargestCluster;
        return {{0, std::max(size, std::min(occupied, limit))}};
    }

    void write(std::uint64_t offset, std::span<const std::uint8_t> bytes) override
    {
        while (!bytes.empty())
        {
            OVERLAPPED at = {};
            at.Offset = static_cast<DWORD>(offset);
            at.OffsetHigh = static_cast<DWORD>(offset >> 32);
            DWORD written = 0;
            checked(WriteFile(file_.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, &at));
            offset += written;
            bytes = bytes.subspan(written);
        }
    }

    void flush() override { checked(FlushFileBuffers(file_.get())); }

    void truncate() override
    {
        checked(SetFilePointerEx(file_.get(), {}, nullptr, FILE_BEGIN));
        checked(SetEndOfFile(file_.get()));
    }

    void rename(const NativeText& name) override
    {
        renameOpen(file_.get(), place_, name);
        place_ = childOf(parentOf(place_), name);
    }

    void remove() override { removeOpen(file_.get()); }

private:
    std::vector<Extent> rangesOf(std::uint64_t size)
    {
        std::vector<Extent> found;
        std::vector<FILE_ALLOCATED_RANGE_BUFFER> ranges(RangesPerQuery);
        FILE_ALLOCATED_RANGE_BUFFER query = {};
        query.Length.QuadPart = static_cast<LONGLONG>(size);
        for (;;)
        {
            DWORD bytes = 0;
            const auto room = static_cast<DWORD>(ranges.size() * sizeof ranges[0]);
            const BOOL whole = DeviceIoControl(file_.get(), FSCTL_QUERY_ALLOCATED_RANGES, &query, sizeof query,
                                               ranges.data(), room, &bytes, nullptr);
            if (!whole && GetLastError() != ERROR_MORE_DATA)
                return {{0, size}}; // holes are not told here
            for (std::size_t i = 0; i < bytes / sizeof ranges[0]; ++i)
                found.push_back({static_cast<std::uint64_t>(ranges[i].FileOffset.QuadPart),
                                 static_cast<std::uint64_t>(ranges[i].Length.QuadPart)});
            if (whole || found.empty())
                return found;
            query.FileOffset.QuadPart = static_cast<LONGLONG>(found.back().offset + found.back().length);
            query.Length.QuadPart = static_cast<LONGLONG>(size) - query.FileOffset.QuadPart;
        }
    }

    FileHandle file_;
    Place place_;
};

constexpr DWORD WipeAccess = GENERIC_READ | GENERIC_WRITE | DELETE;

/// A handle for the attributes alone. It is closed before the file is opened for nobody else, which it could prevent.
FileHandle openAttributes(const Place& place)
{
    return openName(place, FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES, ShareAll);
}

bool unprotectFile(const Place& place)
{
    const FileHandle file = openAttributes(place);
    return infoOf(file.get()).kind == FileKind::File && unprotect(file.get());
}

/// A read-only file cannot be opened for writing: takes the attribute off first, and gives it back on failure.
FileHandle openProtected(const Place& place)
{
    if (!unprotectFile(place))
        throwError(ERROR_ACCESS_DENIED);
    try
    {
        return openName(place, WipeAccess, 0);
    }
    catch (const FileFailure&)
    {
        protect(openAttributes(place).get());
        throw;
    }
}

FileHandle openExclusive(const Place& place)
{
    try
    {
        return openName(place, WipeAccess, 0);
    }
    catch (const FileFailure& failure)
    {
        if (failure.cause() != FailureCause::Denied)
            throw;
    }
    return openProtected(place);
}

} // namespace

std::unique_ptr<IWipeFile> openWipeFile(const Place& place)
{
    FileHandle file = openExclusive(place);
    if (infoOf(file.get()).kind != FileKind::File)
        throwError(ERROR_CANT_ACCESS_FILE);
    FILE_BASIC_INFO basic = {};
    checked(GetFileInformationByHandleEx(file.get(), FileBasicInfo, &basic, sizeof basic));
    if ((basic.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0)
        throw FileFailure(FailureCause::NotInPlace, 0);
    // A user with rights above the attribute opens the file in spite of it, but cannot remove it so.
    unprotect(file.get());
    return std::make_unique<Win32WipeFile>(std::move(file), place);
}

} // namespace VaultCore
