#pragma once

#include <cstdint>
#include <string>

namespace Platform
{

/// The one place where error numbers of the system become those of Windows: that of a failed operation on `path`.
std::uint32_t errorOf(int error, const std::string& path);

} // namespace Platform
