#include "systemutilities/size_texts.h"

#include "platform/locale.h"
#include "platform/platform.h"
#include "systemutilities/progress_arithmetic.h"

#include <algorithm>
#include <charconv>
#include <mutex>
#include <optional>

namespace Halden::SystemUtilities
{

namespace
{

constexpr std::uint64_t Kilobyte = 1024;
constexpr std::uint64_t Megabyte = 1024 * Kilobyte;
constexpr std::uint64_t Gigabyte = 1024 * Megabyte;
constexpr int Automatic = -1;
constexpr std::uint32_t SeparatorSize = 8;
constexpr std::size_t GroupLength = 3;
/// More of them would carry the rounding out of the range of a double.
constexpr int MostDecimals = 300;

struct Separators
{
    std::wstring decimal;
    std::wstring thousand;
};

std::mutex separatorsLock;
std::optional<Separators> keptSeparators;

Separators separators()
{
    const std::lock_guard guard(separatorsLock);
    if (!keptSeparators)
    {
        Platform::Locale& locale = Platform::platform().locale;
        std::wstring decimal = locale.information(Platform::LocaleDecimal, SeparatorSize);
        std::wstring thousand = locale.information(Platform::LocaleThousand, SeparatorSize);
        // A notation may part its groups with nothing; without a decimal separator there is none.
        keptSeparators = decimal.empty() ? Separators{L".", L","} : Separators{std::move(decimal), std::move(thousand)};
    }
    return *keptSeparators;
}

/// The digits behind the point of a fraction, without zeros at the end.
std::wstring fractionText(double fraction, int decimals)
{
    std::string digits(static_cast<std::size_t>(decimals) + 2, '\0'); // "0.", or "0" alone without decimals
    const auto written =
        std::to_chars(digits.data(), digits.data() + digits.size(), fraction, std::chars_format::fixed, decimals);
    digits.resize(static_cast<std::size_t>(written.ptr - digits.data()));
    digits.erase(0, 2);
    digits.erase(digits.find_last_not_of('0') + 1);
    return {digits.begin(), digits.end()};
}

/// The digits in groups of three. A whole part of 0 is written too.
std::wstring wholeText(std::uint64_t whole, const std::wstring& separator)
{
    std::wstring digits = std::to_wstring(whole);
    digits.insert(0, (GroupLength - digits.size() % GroupLength) % GroupLength, L' ');
    std::wstring text = digits.substr(0, GroupLength);
    for (std::size_t start = GroupLength; start < digits.size(); start += GroupLength)
        text += separator + digits.substr(start, GroupLength);
    return text.substr(text.find_first_not_of(L' '));
}

} // namespace

std::wstring FormatScaled(std::uint64_t value, std::uint64_t divisor, int decimals)
{
    const int places = std::clamp(decimals, 0, MostDecimals);
    const double rest = static_cast<double>(value % divisor) / static_cast<double>(divisor);
    const double fraction = RoundTo(rest, places);
    // Rounding may have made it 1.
    const std::uint64_t whole = value / divisor + static_cast<std::uint64_t>(fraction);

    const Separators marks = separators();
    const std::wstring digits = fractionText(fraction, places);
    return wholeText(whole, marks.thousand) + (digits.empty() ? std::wstring() : marks.decimal + digits);
}

std::wstring FormatBytes(std::uint64_t value)
{
    return FormatScaled(value, 1, 0) + L" Bytes";
}

std::wstring FormatKilobytes(std::uint64_t value)
{
    return FormatScaled(value, Kilobyte, value / Kilobyte < 9 ? 1 : 0) + L" KB";
}

std::wstring FormatMegabytes(std::uint64_t value, int decimals)
{
    if (decimals == Automatic)
        decimals = value / Megabyte < 100 ? 1 : 0;
    return FormatScaled(value, Megabyte, decimals) + L" MB";
}

std::wstring FormatGigabytes(std::uint64_t value, int decimals)
{
    return FormatScaled(value, Gigabyte, decimals) + L" GB";
}

std::wstring FormatSize(std::uint64_t value, int decimals)
{
    if (value < Megabyte)
        return FormatKilobytes(value);
    if (value < 999 * Megabyte)
        return FormatMegabytes(value, decimals == Automatic ? 0 : decimals);
    return FormatGigabytes(value, decimals == Automatic ? 2 : decimals);
}

std::wstring FormatKilobytesOrMegabytes(std::uint64_t value)
{
    return value >= 999'999 * Kilobyte ? FormatMegabytes(value, Automatic) : FormatKilobytes(value);
}

void forgetSeparators()
{
    const std::lock_guard guard(separatorsLock);
    keptSeparators.reset();
}

} // namespace Halden::SystemUtilities
