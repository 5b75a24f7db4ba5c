#include "platform/utf8.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace Platform
{

namespace
{

constexpr std::uint32_t EscapeBase = 0xDC00;
constexpr std::uint32_t ReplacementCharacter = 0xFFFD;
constexpr std::uint32_t LastCharacter = 0x10FFFF;
constexpr bool WideIsUtf16 = sizeof(wchar_t) == 2;

bool isHighSurrogate(std::uint32_t value)
{
    return value >= 0xD800 && value <= 0xDBFF;
}

bool isLowSurrogate(std::uint32_t value)
{
    return value >= 0xDC00 && value <= 0xDFFF;
}

bool isEscapedByte(std::uint32_t value)
{
    return value >= EscapeBase + 0x80 && value <= EscapeBase + 0xFF;
}

std::size_t sequenceLength(std::uint8_t lead)
{
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead <= 0xDF)
        return 2;
    if (lead >= 0xE0 && lead <= 0xEF)
        return 3;
    if (lead >= 0xF0 && lead <= 0xF4)
        return 4;
    return 0;
}

struct Decoded
{
    std::uint32_t value;
    std::size_t length;
};

/// The character at the start of `text`, which is not empty; a byte that starts none becomes its escape.
Decoded decode(std::string_view text)
{
    const auto lead = static_cast<std::uint8_t>(text[0]);
    const Decoded escape{EscapeBase + lead, 1};
    const std::size_t length = sequenceLength(lead);
    if (length == 1)
        return {lead, 1};
    if (length == 0 || length > text.size())
        return escape;

    std::uint32_t value = lead & (0x7Fu >> length);
    for (std::size_t index = 1; index < length; ++index)
    {
        const auto byte = static_cast<std::uint8_t>(text[index]);
        if ((byte & 0xC0u) != 0x80u)
            return escape;
        value = (value << 6) | (byte & 0x3Fu);
    }
    constexpr std::array<std::uint32_t, 5> smallest{0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = isHighSurrogate(value) || isLowSurrogate(value);
    if (value < smallest[length] || value > LastCharacter || surrogate)
        return escape;
    return {value, length};
}

void appendWide(std::wstring& text, std::uint32_t value)
{
    if (!WideIsUtf16 || value < 0x10000)
    {
        text += static_cast<wchar_t>(value);
        return;
    }
    text += static_cast<wchar_t>(0xD800 + ((value - 0x10000) >> 10));
    text += static_cast<wchar_t>(0xDC00 + ((value - 0x10000) & 0x3FF));
}

void appendUtf8(std::string& text, std::uint32_t value)
{
    const auto add = [&text](std::uint32_t byte) { text += static_cast<char>(static_cast<std::uint8_t>(byte)); };
    if (value < 0x80)
    {
        add(value);
        return;
    }
    const int followers = value < 0x800 ? 1 : value < 0x10000 ? 2 : 3;
    constexpr std::array<std::uint32_t, 4> leads{0, 0xC0, 0xE0, 0xF0};
    add(leads[static_cast<std::size_t>(followers)] | (value >> (6 * followers)));
    for (int shift = 6 * (followers - 1); shift >= 0; shift -= 6)
        add(0x80 | (value >> shift & 0x3F));
}

/// The unit at `index`; `wchar_t` is signed on some systems.
std::uint32_t unitAt(std::wstring_view text, std::size_t index)
{
    return static_cast<std::make_unsigned_t<wchar_t>>(text[index]);
}

/// The character at `index`, which moves behind it.
std::uint32_t nextCharacter(std::wstring_view text, std::size_t& index)
{
    const std::uint32_t value = unitAt(text, index++);
    if (!WideIsUtf16 || !isHighSurrogate(value) || index == text.size())
        return value;
    const std::uint32_t low = unitAt(text, index);
    if (!isLowSurrogate(low))
        return value;
    ++index;
    return 0x10000 + ((value - 0xD800) << 10) + (low - 0xDC00);
}

} // namespace

std::wstring fromUtf8(std::string_view text)
{
    std::wstring wide;
    wide.reserve(text.size());
    while (!text.empty())
    {
        const Decoded decoded = decode(text);
        appendWide(wide, decoded.value);
        text.remove_prefix(decoded.length);
    }
    return wide;
}

std::string toUtf8(std::wstring_view text)
{
    std::string narrow;
    narrow.reserve(text.size());
    for (std::size_t index = 0; index < text.size();)
    {
        const std::uint32_t value = nextCharacter(text, index);
        if (isEscapedByte(value))
            narrow += static_cast<char>(static_cast<std::uint8_t>(value - EscapeBase));
        else if (isHighSurrogate(value) || isLowSurrogate(value) || value > LastCharacter)
            appendUtf8(narrow, ReplacementCharacter);
        else
            appendUtf8(narrow, value);
    }
    return narrow;
}

} // namespace Platform
