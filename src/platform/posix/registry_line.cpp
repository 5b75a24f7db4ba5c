#include "platform/posix/registry_line.h"

#include "platform/utf16.h"
#include "platform/utf8.h"

#include <algorithm>
#include <charconv>

namespace Platform
{

namespace
{

constexpr std::size_t UnitDigits = 4;
constexpr char Digits[] = "0123456789ABCDEF";

bool isHighSurrogate(char16_t unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool isLowSurrogate(char16_t unit)
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// What a reader would not see, or what would end the line or the text.
bool isEscaped(char16_t unit)
{
    const bool isControl = unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
    const bool endsLine = unit == 0x2028 || unit == 0x2029;
    return isControl || endsLine || unit == u'"' || unit == u'%' || isHighSurrogate(unit) || isLowSurrogate(unit);
}

template <class Number> std::optional<Number> numberOf(std::string_view digits, int base)
{
    Number value = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value, base);
    if (digits.empty() || error != std::errc() || stop != end)
        return std::nullopt;
    return value;
}

/// Characters between two escapes.
std::u16string unitsOfUtf8(std::string_view text)
{
    return unitsOfData(toUtf16(fromUtf8(text)));
}

} // namespace

std::string quoted(std::u16string_view units)
{
    std::string text = "\"";
    for (std::size_t index = 0; index < units.size(); ++index)
    {
        const std::size_t length =
            index + 1 < units.size() && isHighSurrogate(units[index]) && isLowSurrogate(units[index + 1]) ? 2 : 1;
        if (length == 1 && isEscaped(units[index]))
            text += '%' + hexadecimal(units[index], UnitDigits);
        else
            text += toUtf8(fromUtf16(dataOfUnits(units.substr(index, length))));
        index += length - 1;
    }
    return text + '"';
}

std::string hexadecimal(std::uint32_t value, std::size_t digits)
{
    std::string text(digits, '0');
    for (std::size_t index = digits; index-- > 0; value >>= 4)
        text[index] = Digits[value & 0xF];
    return text;
}

std::string hexadecimal(const std::vector<std::uint8_t>& bytes)
{
    std::string text;
    text.reserve(bytes.size() * 2);
    for (const std::uint8_t byte : bytes)
    {
        text += Digits[byte >> 4];
        text += Digits[byte & 0xF];
    }
    return text;
}

std::u16string unitsOfData(const std::vector<std::uint8_t>& data)
{
    std::u16string units;
    units.reserve(data.size() / 2);
    for (std::size_t index = 0; index + 1 < data.size(); index += 2)
        units += static_cast<char16_t>(data[index] | data[index + 1] << 8);
    return units;
}

std::vector<std::uint8_t> dataOfUnits(std::u16string_view units)
{
    std::vector<std::uint8_t> data;
    data.reserve(units.size() * 2);
    for (const char16_t unit : units)
    {
        data.push_back(static_cast<std::uint8_t>(unit));
        data.push_back(static_cast<std::uint8_t>(unit >> 8));
    }
    return data;
}

std::string_view LineReader::word()
{
    const std::size_t length = std::min(rest_.find(' '), rest_.size());
    const std::string_view word = rest_.substr(0, length);
    rest_.remove_prefix(std::min(length + 1, rest_.size()));
    return word;
}

std::optional<std::uint64_t> LineReader::number()
{
    return numberOf<std::uint64_t>(word(), 10);
}

std::optional<std::u16string> LineReader::text()
{
    if (!rest_.starts_with('"'))
        return std::nullopt;
    rest_.remove_prefix(1);
    std::u16string units;
    while (true)
    {
        const std::size_t stop = rest_.find_first_of("\"%");
        if (stop == rest_.npos)
            return std::nullopt;
        units += unitsOfUtf8(rest_.substr(0, stop));
        const bool isEscape = rest_[stop] == '%';
        rest_.remove_prefix(stop + 1);
        if (!isEscape)
            break;
        const std::string_view digits = rest_.substr(0, UnitDigits);
        const auto unit = numberOf<std::uint16_t>(digits, 16);
        if (!unit || digits.size() != UnitDigits)
            return std::nullopt;
        units += static_cast<char16_t>(*unit);
        rest_.remove_prefix(UnitDigits);
    }
    if (rest_.starts_with(' '))
        rest_.remove_prefix(1);
    return units;
}

std::optional<std::vector<std::uint8_t>> LineReader::bytes()
{
    const std::string_view digits = word();
    std::vector<std::uint8_t> data;
    for (std::size_t index = 0; index < digits.size(); index += 2)
    {
        const auto byte = numberOf<std::uint8_t>(digits.substr(index, 2), 16);
        if (!byte)
            return std::nullopt;
        data.push_back(*byte);
    }
    return data;
}

} // namespace Platform
