#pragma once

#include <string_view>

namespace Fuzz
{

/// Characters alone: no null, and no half of a pair that stands by itself.
inline bool isWholeText(std::wstring_view text)
{
    const auto isHigh = [](wchar_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; };
    const auto isLow = [](wchar_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; };
    constexpr bool HasPairs = sizeof(wchar_t) == 2;
    for (std::size_t index = 0; index < text.size(); ++index)
    {
        const bool isPair = HasPairs && isHigh(text[index]) && index + 1 < text.size() && isLow(text[index + 1]);
        if (isPair)
            ++index;
        else if (text[index] == L'\0' || isHigh(text[index]) || isLow(text[index]))
            return false;
    }
    return true;
}

} // namespace Fuzz
