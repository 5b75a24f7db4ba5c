#include "platform/registry_on_tree.h"

#include "platform/handles.h"

#include <algorithm>
#include <cstring>

// What ntdll.dll does on Windows; it answers with a status.

namespace Platform
{

namespace
{

constexpr std::uint32_t MayDelete = 0x00010000;

constexpr std::uint32_t StatusSuccess = 0;
constexpr std::uint32_t StatusBufferOverflow = 0x80000005;
constexpr std::uint32_t StatusUnsuccessful = 0xC0000001;
constexpr std::uint32_t StatusInvalidHandle = 0xC0000008;
constexpr std::uint32_t StatusInvalidParameter = 0xC000000D;
constexpr std::uint32_t StatusAccessDenied = 0xC0000022;
constexpr std::uint32_t StatusBufferTooSmall = 0xC0000023;
constexpr std::uint32_t StatusFileLockConflict = 0xC0000054;
constexpr std::uint32_t StatusDiskFull = 0xC000007F;
constexpr std::uint32_t StatusCannotDelete = 0xC0000121;
constexpr std::uint32_t StatusRegistryCorrupt = 0xC000014C;
constexpr std::uint32_t StatusKeyDeleted = 0xC000017C;

constexpr std::uint32_t KeyNameInformation = 3;
constexpr std::uint32_t LengthSize = 4; ///< of the length before the name

std::uint32_t statusOf(std::uint32_t error)
{
    switch (error)
    {
    case ErrorSuccess:
        return StatusSuccess;
    case ErrorAccessDenied:
        return StatusAccessDenied;
    case ErrorInvalidHandle:
        return StatusInvalidHandle;
    case ErrorLockViolation:
        return StatusFileLockConflict;
    case ErrorDiskFull:
        return StatusDiskFull;
    case ErrorRegistryCorrupt:
        return StatusRegistryCorrupt;
    case ErrorKeyDeleted:
        return StatusKeyDeleted;
    default:
        return StatusUnsuccessful;
    }
}

/// Writes the name record: its length in bytes, then the units.
void writeName(const std::u16string& name, void* buffer, std::uint32_t length)
{
    const auto bytes = static_cast<std::uint32_t>(name.size() * sizeof(char16_t));
    std::memcpy(buffer, &bytes, sizeof bytes);
    std::memcpy(static_cast<std::uint8_t*>(buffer) + LengthSize, name.data(), std::min(bytes, length - LengthSize));
}

} // namespace

std::uint32_t RegistryOnTree::deleteKeyObject(void*, RegistryHandle key)
{
    OpenKey open;
    if (const std::uint32_t error = findObject(key, open); error != ErrorSuccess)
        return statusOf(error);
    if ((open.access & MayDelete) == 0)
        return StatusAccessDenied;
    bool hasKeys = false;
    const std::uint32_t error = storage_.change(
        [&](RegistryTree& tree)
        {
            const std::uint32_t result = tree.remove(open.id);
            hasKeys = result == ErrorAccessDenied;
            return result;
        });
    return hasKeys ? StatusCannotDelete : statusOf(error);
}

std::uint32_t RegistryOnTree::queryKey(void*, RegistryHandle key, std::uint32_t informationClass, void* buffer,
                                       std::uint32_t length, std::uint32_t& needed)
{
    if (informationClass != KeyNameInformation)
        return StatusInvalidParameter;
    OpenKey open;
    std::u16string name;
    std::uint32_t error = findObject(key, open);
    if (error == ErrorSuccess)
        error = storage_.read(
            [&](const RegistryTree& tree)
            {
                if (!tree.find(open.id))
                    return ErrorKeyDeleted;
                name = tree.fullName(open.id);
                return ErrorSuccess;
            });
    if (error != ErrorSuccess)
        return statusOf(error);
    needed = static_cast<std::uint32_t>(LengthSize + name.size() * sizeof(char16_t));
    if (!buffer || length < LengthSize)
        return StatusBufferTooSmall;
    writeName(name, buffer, length);
    return length < needed ? StatusBufferOverflow : StatusSuccess;
}

} // namespace Platform
