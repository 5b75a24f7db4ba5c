#pragma once

#include "platform/posix/descriptor.h"

#include <chrono>
#include <cstdint>
#include <string>

namespace Platform
{

// Files that belong to this user alone. Each operation gives a result of `Registry`.

inline constexpr std::size_t LargestSettingsFile = 16 * 1024 * 1024;

/// The result for an error number of the system.
std::uint32_t errorOfSettings(int error);

/// Makes what is missing of the folder, for this user alone. It has to be his own.
std::uint32_t openOwnFolder(const std::string& path, Descriptor& folder);

/// All of an open file, which has to be a plain file of this user's own. One that is too large counts as damaged.
std::uint32_t readOwnFile(int file, std::string& content);

/// Writes a new file to the disk, in place of one that was left over.
std::uint32_t writeOwnFile(int folder, const char* name, const std::string& content, Descriptor& file);

/// Waits until nobody else has locked this file, which is made when it is missing. The lock ends with the descriptor.
std::uint32_t lockFile(int folder, const char* name, std::chrono::milliseconds patience, Descriptor& lock);

} // namespace Platform
