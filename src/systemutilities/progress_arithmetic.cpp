#include "systemutilities/progress_arithmetic.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Halden::SystemUtilities
{

namespace
{

/// What both numbers are divided by: 100, as many times as it takes to bring the total below ten million.
/// One division by the product is the same as the divisions one after the other, and faster.
std::uint64_t scaleOf(std::uint64_t total)
{
    const std::uint64_t tenMillions = total / 10'000'000;
    std::uint64_t scale = 1;
    while (tenMillions >= scale)
        scale *= 100;
    return scale;
}

} // namespace

double RoundTo(double value, int decimals)
{
    double whole = 0;
    double scaled = std::modf(value, &whole);
    for (int i = 0; i < decimals; ++i)
        scaled *= 10;

    double cut = 0;
    if (std::modf(scaled, &cut) >= 0.5)
        cut += 1;
    for (int i = 0; i < decimals; ++i)
        cut /= 10;
    return whole + cut;
}

double percentOfDouble(std::uint64_t part, std::uint64_t total, int decimals)
{
    if (part == 0)
        return 0.0;
    if (const std::uint64_t scale = scaleOf(total); scale > 1)
    {
        total /= scale;
        part /= scale;
    }
    // Intended: the share by way of its inverse. A part that was scaled down to 0 makes it not a number.
    const double inverse = static_cast<double>(total) / static_cast<double>(part);
    return RoundTo(inverse / (inverse * inverse) * 100, decimals);
}

std::int32_t percentOf(std::uint64_t part, std::uint64_t total)
{
    return cutToInteger(percentOfDouble(part, total, 0));
}

std::uint64_t EstimateRemainingSeconds(std::uint64_t done, std::uint32_t elapsedSeconds, std::uint64_t remaining)
{
    const std::uint64_t speed = done / std::max<std::uint32_t>(elapsedSeconds, 1);
    return remaining / std::max<std::uint64_t>(speed, 1);
}

std::int32_t cutToInteger(double value)
{
    if (!(value > -2147483649.0 && value < 2147483648.0))
        return std::numeric_limits<std::int32_t>::min();
    return static_cast<std::int32_t>(value);
}

} // namespace Halden::SystemUtilities
