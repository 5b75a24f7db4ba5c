#include "platform/win32/concerns.h"

#include <windows.h>

#include <time.h>

namespace Platform
{

namespace
{

static_assert(LocaleDecimal == LOCALE_SDECIMAL && LocaleThousand == LOCALE_STHOUSAND &&
              LocaleShortDate == LOCALE_SSHORTDATE && LocaleTimeFormat == LOCALE_STIMEFORMAT);

/// The text that a function of the system writes when it is given a buffer, and the size that it asks for without one.
template <class Write> std::wstring written(const Write& write)
{
    const int size = write(nullptr, 0);
    if (size <= 0)
        return {};
    std::wstring text(static_cast<std::size_t>(size), L'\0');
    const int length = write(text.data(), size);
    text.resize(length > 0 ? static_cast<std::size_t>(length) - 1 : 0);
    return text;
}

SYSTEMTIME systemTimeOf(const LocalTime& time)
{
    SYSTEMTIME fields{};
    fields.wYear = static_cast<WORD>(time.year);
    fields.wMonth = static_cast<WORD>(time.month);
    fields.wDayOfWeek = static_cast<WORD>(time.dayOfWeek);
    fields.wDay = static_cast<WORD>(time.day);
    fields.wHour = static_cast<WORD>(time.hour);
    fields.wMinute = static_cast<WORD>(time.minute);
    fields.wSecond = static_cast<WORD>(time.second);
    return fields;
}

class Win32Locale : public Locale
{
public:
    std::wstring information(std::uint32_t type, std::uint32_t size) override
    {
        if (size == 0)
            return {};
        std::wstring text(size, L'\0');
        const int length = GetLocaleInfoW(LOCALE_USER_DEFAULT, type, text.data(), static_cast<int>(size));
        text.resize(length > 0 ? static_cast<std::size_t>(length) - 1 : 0);
        return text;
    }

    LocalTime localTime(std::int64_t seconds) override
    {
        const __time64_t time = seconds;
        tm fields{};
        if (_localtime64_s(&fields, &time) != 0)
            return {};
        return {fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday, fields.tm_wday,
                fields.tm_hour,        fields.tm_min,     fields.tm_sec};
    }

    std::wstring dateText(const LocalTime& time, const std::wstring& format) override
    {
        const SYSTEMTIME fields = systemTimeOf(time);
        return written([&](wchar_t* buffer, int size)
                       { return GetDateFormatW(LOCALE_USER_DEFAULT, 0, &fields, format.c_str(), buffer, size); });
    }

    std::wstring timeText(const LocalTime& time, const std::wstring& format) override
    {
        const SYSTEMTIME fields = systemTimeOf(time);
        return written([&](wchar_t* buffer, int size)
                       { return GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &fields, format.c_str(), buffer, size); });
    }
};

} // namespace

Locale& win32Locale()
{
    static Win32Locale concern;
    return concern;
}

} // namespace Platform
