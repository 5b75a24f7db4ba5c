#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Platform
{

/// Text as bytes of 16-bit units, little-endian, which is how a registry holds it. Where a wide character has 32 bits,
/// a pair of surrogates becomes one character, and one that stands alone stays. An odd last byte is dropped. Nulls are
/// characters like any other.
std::wstring fromUtf16(std::span<const std::uint8_t> bytes);
/// The way back, without a terminator. What is no character at all becomes U+FFFD.
std::vector<std::uint8_t> toUtf16(std::wstring_view text);

} // namespace Platform
