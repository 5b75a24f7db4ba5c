#include "platform/picture_text.h"

#include <chrono>
#include <string_view>

namespace Platform
{

namespace
{

constexpr int FirstYear = 1601;
constexpr std::size_t TwoDigits = 2;

std::wstring number(int value, std::size_t digits)
{
    std::wstring text = std::to_wstring(value);
    if (text.size() < digits)
        text.insert(0, digits - text.size(), L'0');
    return text;
}

std::chrono::year_month_day dateOf(const LocalTime& time)
{
    return {std::chrono::year(time.year), std::chrono::month(static_cast<unsigned>(time.month)),
            std::chrono::day(static_cast<unsigned>(time.day))};
}

bool isDate(const LocalTime& time)
{
    return time.year >= FirstYear && time.month >= 1 && time.month <= 12 && time.day >= 1 && time.day <= 31 &&
           dateOf(time).ok();
}

bool isTime(const LocalTime& time)
{
    return time.hour >= 0 && time.hour < 24 && time.minute >= 0 && time.minute < 60 && time.second >= 0 &&
           time.second < 60;
}

struct DateFields
{
    static constexpr std::wstring_view Letters = L"dMy";

    std::wstring field(wchar_t letter, std::size_t count) const
    {
        if (letter == L'y')
            return count > 2 ? number(time.year, 4) : number(time.year % 100, count);
        if (letter == L'M')
            return named(count, time.month, words.shortMonths[month()], words.months[month()]);
        const unsigned weekday = std::chrono::weekday(std::chrono::sys_days(dateOf(time))).c_encoding();
        return named(count, time.day, words.shortDays[weekday], words.days[weekday]);
    }

    std::size_t month() const { return static_cast<std::size_t>(time.month - 1); }

    static std::wstring named(std::size_t count, int value, const std::wstring& brief, const std::wstring& full)
    {
        if (count <= TwoDigits)
            return number(value, count);
        return count == 3 ? brief : full;
    }

    const LocalTime& time;
    const PictureWords& words;
};

struct TimeFields
{
    static constexpr std::wstring_view Letters = L"hHmst";

    std::wstring field(wchar_t letter, std::size_t count) const
    {
        const std::size_t digits = std::min(count, TwoDigits);
        if (letter == L't')
        {
            const std::wstring& half = time.hour < 12 ? words.morning : words.afternoon;
            return count == 1 ? half.substr(0, 1) : half;
        }
        if (letter == L'h')
            return number((time.hour + 11) % 12 + 1, digits);
        if (letter == L'H')
            return number(time.hour, digits);
        return number(letter == L'm' ? time.minute : time.second, digits);
    }

    const LocalTime& time;
    const PictureWords& words;
};

/// The text in quotes that starts at `position`, which moves behind it. A quote that does not end takes all.
std::wstring quoted(const std::wstring& picture, std::size_t& position)
{
    std::wstring text;
    for (++position; position < picture.size(); ++position)
    {
        if (picture[position] == L'\'')
        {
            ++position;
            if (position == picture.size() || picture[position] != L'\'')
                return text;
        }
        text += picture[position];
    }
    return text;
}

template <class Fields> std::wstring fill(const std::wstring& picture, const Fields& fields)
{
    std::wstring text;
    for (std::size_t position = 0; position < picture.size();)
    {
        const wchar_t letter = picture[position];
        if (letter == L'\'')
        {
            text += quoted(picture, position);
            continue;
        }
        const std::size_t end = std::min(picture.find_first_not_of(letter, position), picture.size());
        const std::size_t count = end - position;
        text += Fields::Letters.find(letter) == std::wstring_view::npos ? std::wstring(count, letter)
                                                                        : fields.field(letter, count);
        position = end;
    }
    return text;
}

} // namespace

const PictureWords& englishWords()
{
    static const PictureWords words{
        {L"Sunday", L"Monday", L"Tuesday", L"Wednesday", L"Thursday", L"Friday", L"Saturday"},
        {L"Sun", L"Mon", L"Tue", L"Wed", L"Thu", L"Fri", L"Sat"},
        {L"January", L"February", L"March", L"April", L"May", L"June", L"July", L"August", L"September", L"October",
         L"November", L"December"},
        {L"Jan", L"Feb", L"Mar", L"Apr", L"May", L"Jun", L"Jul", L"Aug", L"Sep", L"Oct", L"Nov", L"Dec"},
        L"AM",
        L"PM"};
    return words;
}

std::wstring datePictureText(const LocalTime& time, const std::wstring& picture, const PictureWords& words)
{
    if (!isDate(time))
        return {};
    return fill(picture, DateFields{time, words});
}

std::wstring timePictureText(const LocalTime& time, const std::wstring& picture, const PictureWords& words)
{
    if (!isTime(time))
        return {};
    return fill(picture, TimeFields{time, words});
}

} // namespace Platform
