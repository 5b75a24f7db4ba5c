#pragma once

#include <cstdint>

namespace Halden::SystemUtilities
{

/// Rounds to so many decimals; the value is split toward zero and a half rounds upward.
double RoundTo(double value, int decimals);
/// Share of `part` in `total` in percent, rounded. Not a number where the scaling divides `part` down to 0.
double percentOfDouble(std::uint64_t part, std::uint64_t total, int decimals);
/// The same as a whole number; a result that is not a 32-bit number gives -2147483648.
std::int32_t percentOf(std::uint64_t part, std::uint64_t total);
/// Seconds left at the speed so far. Neither 0 elapsed seconds nor a speed of 0 divides by zero.
std::uint64_t EstimateRemainingSeconds(std::uint64_t done, std::uint32_t elapsedSeconds, std::uint64_t remaining);
/// Cuts the fraction off. What is not a 32-bit number, or no number at all, gives -2147483648.
std::int32_t cutToInteger(double value);

} // namespace Halden::SystemUtilities
