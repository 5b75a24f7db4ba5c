#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Platform
{

// Names of a registry are 16-bit units on every system, whatever a wide character is.

inline constexpr std::size_t LongestKeyName = 255;     ///< in units
inline constexpr std::size_t LongestValueName = 16383; ///< in units

/// The units of a text as far as its first null.
std::u16string registryUnits(std::wstring_view text);
std::wstring registryText(std::u16string_view units);

/// What is the same for two names that differ in nothing but the case of their letters. Independent of the language of
/// the user and of the process; a letter always takes one unit.
std::u16string foldedName(std::u16string_view name);

} // namespace Platform
