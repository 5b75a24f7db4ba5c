#include "platform/posix/time_format.h"

#include <map>
#include <string_view>

namespace Platform
{

namespace
{

/// Every letter that is a field of a date or of a time.
constexpr std::wstring_view FieldLetters = L"dMyghHmst'";
constexpr std::wstring_view Modifiers = L"EO-_0^#";

const std::map<wchar_t, std::wstring>& pictures()
{
    static const std::map<wchar_t, std::wstring> table{
        {L'd', L"dd"},       {L'e', L"d"},          {L'm', L"MM"},       {L'y', L"yy"},       {L'Y', L"yyyy"},
        {L'a', L"ddd"},      {L'A', L"dddd"},       {L'b', L"MMM"},      {L'h', L"MMM"},      {L'B', L"MMMM"},
        {L'H', L"HH"},       {L'k', L"H"},          {L'I', L"hh"},       {L'l', L"h"},        {L'M', L"mm"},
        {L'S', L"ss"},       {L'p', L"tt"},         {L'P', L"tt"},       {L'R', L"HH:mm"},    {L'T', L"HH:mm:ss"},
        {L'D', L"MM/dd/yy"}, {L'F', L"yyyy-MM-dd"}, {L'x', L"MM/dd/yy"}, {L'X', L"HH:mm:ss"}, {L'%', L"%"},
        {L'n', L"\n"},       {L't', L"\t"}};
    return table;
}

std::wstring literal(wchar_t character)
{
    if (character == L'\'')
        return L"''''";
    if (FieldLetters.find(character) == std::wstring_view::npos)
        return {character};
    return {L'\'', character, L'\''};
}

std::wstring fieldPicture(wchar_t letter, bool withoutZero, const std::wstring& twelveHours)
{
    // What stands for twelve hours has none in it, so that this ends.
    if (letter == L'r')
        return pictureOfFormat(twelveHours, {});
    const auto found = pictures().find(letter);
    if (found == pictures().end())
        return {};
    const std::wstring& picture = found->second;
    return withoutZero && picture.size() == 2 && letter != L'p' && letter != L'P' ? picture.substr(1) : picture;
}

} // namespace

std::wstring pictureOfFormat(const std::wstring& format, const std::wstring& twelveHours)
{
    std::wstring picture;
    for (std::size_t position = 0; position < format.size(); ++position)
    {
        if (format[position] != L'%')
        {
            picture += literal(format[position]);
            continue;
        }
        bool withoutZero = false;
        while (++position < format.size() && Modifiers.find(format[position]) != std::wstring_view::npos)
            withoutZero = withoutZero || format[position] == L'-';
        if (position < format.size())
            picture += fieldPicture(format[position], withoutZero, twelveHours);
    }
    return picture;
}

std::wstring groupSeparator(const std::wstring& named, const std::wstring& decimal)
{
    if (!named.empty())
        return named;
    return decimal == L"," ? L"." : L",";
}

} // namespace Platform
