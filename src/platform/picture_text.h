#pragma once

#include "platform/locale.h"

#include <array>
#include <string>

namespace Platform
{

/// The words that stand in dates and times.
struct PictureWords
{
    std::array<std::wstring, 7> days; ///< from Sunday on
    std::array<std::wstring, 7> shortDays;
    std::array<std::wstring, 12> months;
    std::array<std::wstring, 12> shortMonths;
    std::wstring morning;
    std::wstring afternoon;
};

/// "Sunday", "Sun", "January", "Jan", "AM", "PM" and so on.
const PictureWords& englishWords();

// Format pictures for systems that have none of their own. A run of one letter stands for a field, the longest form for
// any longer run; text in single quotes stands for itself, two of them for one; so does every other character.

/// Fields: d dd ddd dddd, M MM MMM MMMM, y yy yyyy. Empty when there is no such day, or before the year 1601. The day
/// of the week follows from the date.
std::wstring datePictureText(const LocalTime& time, const std::wstring& picture, const PictureWords& words);

/// Fields: h hh (12 hours), H HH (24 hours), m mm, s ss, t tt (the first character of AM or PM, or all of it). Empty
/// when there is no such time.
std::wstring timePictureText(const LocalTime& time, const std::wstring& picture, const PictureWords& words);

} // namespace Platform
