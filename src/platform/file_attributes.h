#pragma once

#include <cstdint>

namespace Platform
{

inline constexpr std::uint32_t AttributeReadOnly = 0x1;
inline constexpr std::uint32_t AttributeDirectory = 0x10;
inline constexpr std::uint32_t AttributeNormal = 0x80;         ///< no other attribute
inline constexpr std::uint32_t InvalidAttributes = 0xFFFFFFFF; ///< `INVALID_FILE_ATTRIBUTES`

} // namespace Platform
