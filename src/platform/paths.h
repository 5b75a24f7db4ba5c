#pragma once

#include "platform/file_attributes.h"

#include <cstdint>
#include <string>

namespace Platform
{

inline constexpr std::uint32_t ErrorInsufficientBuffer = 122;

/// Paths as the system knows them. A failed operation sets the last error (`Handles::lastError`). Sizes are in
/// characters, the terminator among them, results as the system's function gives them. On Linux a file has one name,
/// and there are no drives, no devices and no Windows directory. Any thread.
class Paths
{
public:
    virtual ~Paths() = default;
    /// `GetModuleFileNameW` of the program into a buffer of `size` characters; what does not fit is cut off.
    virtual std::wstring programFileName(std::uint32_t size) = 0;
    /// `GetWindowsDirectoryW` into a buffer of `size` characters. Empty on failure, and when it does not fit.
    virtual std::wstring windowsDirectory(std::uint32_t size) = 0;
    /// `PathCanonicalizeW`, of the text alone: "." and ".." are taken out. False on failure, and then `canonical` is
    /// empty; Windows takes no path of 260 characters and more.
    virtual bool canonicalize(const std::wstring& path, std::wstring& canonical) = 0;
    /// `GetLongPathNameW`: the length without the terminator when it fits, the size that is needed when not, 0 on
    /// failure. `buffer` may be null when `size` is 0.
    virtual std::uint32_t longPathName(const std::wstring& path, wchar_t* buffer, std::uint32_t size) = 0;
    /// `GetShortPathNameW`, in the same way.
    virtual std::uint32_t shortPathName(const std::wstring& path, wchar_t* buffer, std::uint32_t size) = 0;
    /// `QueryDosDeviceW`: how many characters were written, the two terminators among them; 0 on failure. A name
    /// that was mapped several times gives all its devices, the one that holds first, each with a terminator.
    virtual std::uint32_t queryDosDevice(const std::wstring& name, wchar_t* buffer, std::uint32_t size) = 0;
    /// `GetFileAttributesW`: `InvalidAttributes` on failure. On Linux a file that nobody may write to is read-only.
    virtual std::uint32_t attributes(const std::wstring& path) = 0;
    /// `SetFileAttributesW`. False on failure. On Linux the read-only bit alone is set or cleared, as by `chmod a-w`
    /// and `chmod u+w`.
    virtual bool setAttributes(const std::wstring& path, std::uint32_t attributes) = 0;
};

} // namespace Platform
