#include "systemutilities/device_paths.h"

#include "platform/handles.h"
#include "platform/paths.h"
#include "platform/platform.h"
#include "systemutilities/file_system_exception.h"
#include "systemutilities/shell_utilities.h"

#include <algorithm>

namespace Halden::SystemUtilities
{

namespace
{

constexpr auto None = std::wstring::npos;
constexpr std::uint32_t BufferSize = 260;
/// No list of devices of the system is as long. A system that asked for more for ever would take all memory.
constexpr std::uint32_t LargestBuffer = 1U << 24;
constexpr std::uint32_t Terminators = 2;

std::uint32_t query(const std::wstring& drive, std::wstring& buffer)
{
    return Platform::platform().paths.queryDosDevice(drive, buffer.data(), static_cast<std::uint32_t>(buffer.size()));
}

/// What was written without its terminators.
std::wstring cut(const std::wstring& buffer, std::uint32_t length)
{
    return buffer.substr(0, std::max(length, Terminators) - Terminators);
}

/// The device of a drive; empty when it has none.
std::wstring deviceOf(const std::wstring& drive)
{
    std::wstring buffer(BufferSize, L'\0');
    std::uint32_t length = query(drive, buffer);
    while (length == 0 && Platform::platform().handles.lastError() == Platform::ErrorInsufficientBuffer &&
           buffer.size() < LargestBuffer)
    {
        buffer.resize(buffer.size() * 2);
        length = query(drive, buffer);
    }
    // Of several devices the first one holds.
    const std::wstring devices = cut(buffer, length);
    return devices.substr(0, devices.find(L'\0'));
}

} // namespace

std::wstring DevicePathFromDosPath(const std::wstring& path)
{
    if (path.empty())
        return {};
    const std::size_t colon = path.find(L':', 1);
    if (colon == None)
        throw FileSystemException("Can't convert NT path. Invalid path: ", path);
    const std::wstring drive = path.substr(0, colon + 1);
    // Never so: the drive has its colon at least.
    if (drive.empty())
        throw FileSystemException("Could not get MS-DOS device name", path);

    std::wstring buffer(BufferSize, L'\0');
    const std::uint32_t length = query(drive, buffer);
    if (length == 0)
        throw FileSystemException("Could not get size of nt path", path);
    // Intended: only the two terminators at the end are cut off. A drive that was mapped several times keeps the
    // devices behind the first one, with the terminators between them.
    return cut(buffer, length) + path.substr(colon + 1);
}

std::wstring DosPathFromDevicePath(const std::wstring& path)
{
    if (path.empty())
        return {};
    const std::size_t second = path.find(L'\\', 1);
    const std::size_t third = second == None ? None : path.find(L'\\', second + 1);
    if (third == None)
        throw FileSystemException("Can't normalize NT path. Can't find third slash", path);

    const std::wstring device = path.substr(0, third);
    // Intended: Z is not tried, and a device that is mapped to it alone fails.
    for (wchar_t letter = L'A'; letter <= L'Y'; ++letter)
    {
        const std::wstring drive{letter, L':'};
        if (deviceOf(drive) == device)
            return JoinPath(drive, path.substr(third + 1));
    }
    throw FileSystemException("Can't resolve NT path", path);
}

} // namespace Halden::SystemUtilities
