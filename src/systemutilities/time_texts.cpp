#include "systemutilities/time_texts.h"

#include "platform/locale.h"
#include "platform/platform.h"

namespace Halden::SystemUtilities
{

namespace
{

/// The system has no longer picture.
constexpr std::uint32_t PictureSize = 80;

} // namespace

std::wstring FormatSeconds(std::int32_t seconds)
{
    std::wstring text;
    const std::int32_t hours = seconds / 3600;
    seconds %= 3600;
    if (hours != 0)
        text += std::to_wstring(hours) + L"h ";
    const std::int32_t minutes = seconds / 60;
    seconds %= 60;
    if (minutes != 0 || hours != 0)
        text += std::to_wstring(minutes) + L"m ";
    return text + std::to_wstring(seconds) + L's';
}

std::wstring FormatDateTime(std::int64_t time)
{
    Platform::Locale& locale = Platform::platform().locale;
    const Platform::LocalTime fields = locale.localTime(time);
    const std::wstring date = locale.dateText(fields, locale.information(Platform::LocaleShortDate, PictureSize));
    return date + L' ' + locale.timeText(fields, locale.information(Platform::LocaleTimeFormat, PictureSize));
}

} // namespace Halden::SystemUtilities
