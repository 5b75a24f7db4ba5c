#include "platform/utf16.h"

#include <cstddef>
#include <type_traits>

namespace Platform
{

namespace
{

constexpr bool WideIsUtf16 = sizeof(wchar_t) == 2;
constexpr std::uint32_t ReplacementCharacter = 0xFFFD;
constexpr std::uint32_t LastCharacter = 0x10FFFF;
constexpr std::uint32_t FirstOfPairs = 0x10000; ///< characters from here on take two units

bool isHighSurrogate(std::uint32_t unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool isLowSurrogate(std::uint32_t unit)
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

std::uint32_t unitAt(std::span<const std::uint8_t> bytes, std::size_t index)
{
    return static_cast<std::uint32_t>(bytes[index] | bytes[index + 1] << 8);
}

void appendUnit(std::vector<std::uint8_t>& bytes, std::uint32_t unit)
{
    bytes.push_back(static_cast<std::uint8_t>(unit));
    bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
}

void appendCharacter(std::vector<std::uint8_t>& bytes, std::uint32_t value)
{
    if (value > LastCharacter)
        value = ReplacementCharacter;
    if (value < FirstOfPairs)
    {
        appendUnit(bytes, value);
        return;
    }
    appendUnit(bytes, 0xD800 + ((value - FirstOfPairs) >> 10));
    appendUnit(bytes, 0xDC00 + ((value - FirstOfPairs) & 0x3FF));
}

} // namespace

std::wstring fromUtf16(std::span<const std::uint8_t> bytes)
{
    std::wstring text;
    text.reserve(bytes.size() / 2);
    for (std::size_t index = 0; index + 1 < bytes.size(); index += 2)
    {
        std::uint32_t value = unitAt(bytes, index);
        if (!WideIsUtf16 && isHighSurrogate(value) && index + 3 < bytes.size())
            if (const std::uint32_t low = unitAt(bytes, index + 2); isLowSurrogate(low))
            {
                value = FirstOfPairs + ((value - 0xD800) << 10) + (low - 0xDC00);
                index += 2;
            }
        text += static_cast<wchar_t>(value);
    }
    return text;
}

std::vector<std::uint8_t> toUtf16(std::wstring_view text)
{
    std::vector<std::uint8_t> bytes;
    bytes.reserve(text.size() * 2);
    for (const wchar_t character : text)
        appendCharacter(bytes, static_cast<std::make_unsigned_t<wchar_t>>(character)); // `wchar_t` can be signed
    return bytes;
}

} // namespace Platform
