#include "platform/posix/terminal_text.h"

#include <cwchar>

namespace Platform
{

namespace
{

constexpr wchar_t Substitute = L'?';

bool isHarmful(wchar_t character)
{
    const bool control = character < 0x20 || (character >= 0x7F && character <= 0x9F);
    const bool lineSeparator = character == 0x2028 || character == 0x2029;
    const bool directionOverride =
        (character >= 0x202A && character <= 0x202E) || (character >= 0x2066 && character <= 0x2069);
    const bool notText = character >= 0xD800 && character <= 0xDFFF;
    return control || lineSeparator || directionOverride || notText;
}

} // namespace

std::wstring displayText(const std::wstring& text)
{
    std::wstring shown;
    for (const wchar_t character : text)
    {
        if (character == L'\r')
            continue;
        shown += character != L'\n' && isHarmful(character) ? Substitute : character;
    }
    return shown;
}

std::wstring displayLine(const std::wstring& text)
{
    std::wstring shown = text;
    for (wchar_t& character : shown)
        if (isHarmful(character))
            character = Substitute;
    return shown;
}

std::wstring fitColumns(const std::wstring& line, int columns)
{
    std::size_t length = 0;
    for (int used = 0; length < line.size(); ++length)
    {
        const int width = wcwidth(line[length]);
        used += width < 0 ? 1 : width;
        if (used > columns)
            break;
    }
    return line.substr(0, length);
}

} // namespace Platform
