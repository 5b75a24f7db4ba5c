#include "statistics/journal_line.h"

#include "platform/utf8.h"

#include <cstdio>

namespace StatisticsModule
{
namespace
{

namespace chrono = std::chrono;

template <class... Numbers> std::string formatted(const char* format, Numbers... numbers)
{
    char text[64] = {};
    std::snprintf(text, sizeof(text), format, numbers...);
    return text;
}

std::string timeText(chrono::system_clock::time_point time)
{
    const auto moment = chrono::floor<chrono::milliseconds>(time);
    const auto day = chrono::floor<chrono::days>(moment);
    const chrono::year_month_day date(day);
    const chrono::hh_mm_ss clock(moment - day);
    return formatted("%04d-%02u-%02uT%02d:%02d:%02d.%03dZ", static_cast<int>(date.year()),
                     static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                     static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                     static_cast<int>(clock.seconds().count()), static_cast<int>(clock.subseconds().count()));
}

bool isHighSurrogate(wchar_t unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool isLowSurrogate(wchar_t unit)
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// How many units at the start of `text` are one character: two for a pair where units have 16 bits.
std::size_t unitsOfCharacter(std::wstring_view text)
{
    const bool isPair = sizeof(wchar_t) == 2 && text.size() > 1 && isHighSurrogate(text[0]) && isLowSurrogate(text[1]);
    return isPair ? 2 : 1;
}

std::string escaped(std::wstring_view character)
{
    if (character == L"\"")
        return "\\\"";
    if (character == L"\\")
        return "\\\\";
    const auto unit = static_cast<char32_t>(character[0]);
    const bool isControl = unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
    const bool isLone = character.size() == 1 && unit >= 0xD800 && unit <= 0xDFFF;
    // The separators of lines and paragraphs end a line for some readers.
    const bool endsLine = unit == 0x2028 || unit == 0x2029;
    return isControl || isLone || endsLine ? formatted("\\u%04x", static_cast<unsigned>(unit))
                                           : Platform::toUtf8(character);
}

std::string textOf(std::wstring_view text)
{
    std::string result = "\"";
    while (!text.empty())
    {
        const std::size_t units = unitsOfCharacter(text);
        result += escaped(text.substr(0, units));
        text.remove_prefix(units);
    }
    return result + '"';
}

struct ArgumentText
{
    std::string operator()(std::int64_t number) const { return std::to_string(number); }
    std::string operator()(std::wstring_view text) const { return textOf(text); }
    std::string operator()(std::nullptr_t) const { return "null"; }
};

} // namespace

std::string journalLine(chrono::system_clock::time_point time, std::uint32_t process, const Call& call)
{
    std::string line = "[\"" + timeText(time) + "\", " + std::to_string(process) + ", \"";
    line += call.operation;
    line += '"';
    for (const Argument& argument : call.arguments)
        line += ", " + std::visit(ArgumentText{}, argument);
    return line + "]\n";
}

} // namespace StatisticsModule
