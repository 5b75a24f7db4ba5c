#pragma once

#include "platform/file_attributes.h"
#include "platform/handles.h"

#include <cstdint>
#include <string>

namespace Platform
{

inline constexpr std::uint32_t GenericRead = 0x80000000;
inline constexpr std::uint32_t ShareNothing = 0;
inline constexpr std::uint32_t OpenExisting = 3;

// What `findFirstChange` watches for.
inline constexpr std::uint32_t ChangeFileName = 0x01;
inline constexpr std::uint32_t ChangeAttributes = 0x04;
inline constexpr std::uint32_t ChangeLastWrite = 0x10;

/// `WIN32_FIND_DATAW`, as far as it is used.
struct FoundFile
{
    std::wstring name; ///< without a folder
    std::uint32_t attributes = 0;
};

/// Files and folders. Any thread.
class Files
{
public:
    virtual ~Files() = default;
    /// `CreateFileW` without security attributes and template. `InvalidHandle` on failure, with the last error set;
    /// closed with `Handles::close`.
    virtual Handle open(const std::wstring& path, std::uint32_t access, std::uint32_t share, std::uint32_t disposition,
                        std::uint32_t flags) = 0;

    /// `FindFirstChangeNotificationW`. `InvalidHandle` on failure. Signalled from the first change on, for good.
    virtual Handle findFirstChange(const std::wstring& folder, bool subtree, std::uint32_t filter) = 0;
    /// `FindCloseChangeNotification`.
    virtual void findCloseChange(Handle handle) = 0;

    /// `FindFirstFileW`, wildcards in the last part of the path. `InvalidHandle` when there is no match.
    virtual Handle findFirst(const std::wstring& pattern, FoundFile& found) = 0;
    /// `FindNextFileW`. False at the end.
    virtual bool findNext(Handle search, FoundFile& found) = 0;
    /// `FindClose`.
    virtual void findClose(Handle search) = 0;

    /// `_wstat64`: seconds since 1970 of the last write, into `seconds`. False on failure; `seconds` is then unchanged.
    virtual bool modificationTime(const std::wstring& path, std::int64_t& seconds) = 0;

    // Text alone; nothing is looked up.

    /// `PathMatchSpecW` with one pattern.
    virtual bool matches(const std::wstring& file, const std::wstring& pattern) = 0;
    /// `PathFindFileNameW`: the last part, the whole path when it ends in a separator and has no such part.
    virtual std::wstring fileName(const std::wstring& path) = 0;
    /// `PathRemoveFileSpecW`: without the last part and its separator.
    virtual std::wstring removeFileSpec(const std::wstring& path) = 0;
    /// `PathAppendW`.
    virtual std::wstring append(const std::wstring& path, const std::wstring& more) = 0;
};

} // namespace Platform
