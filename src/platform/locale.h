#pragma once

#include <cstdint>
#include <string>

namespace Platform
{

inline constexpr std::uint32_t LocaleDecimal = 14;      ///< `LOCALE_SDECIMAL`
inline constexpr std::uint32_t LocaleThousand = 15;     ///< `LOCALE_STHOUSAND`
inline constexpr std::uint32_t LocaleShortDate = 31;    ///< `LOCALE_SSHORTDATE`
inline constexpr std::uint32_t LocaleTimeFormat = 4099; ///< `LOCALE_STIMEFORMAT`

/// A time in the fields of the user's clock and calendar.
struct LocalTime
{
    int year = 0;
    int month = 0;     ///< 1 to 12
    int day = 0;       ///< 1 to 31
    int dayOfWeek = 0; ///< 0 for Sunday
    int hour = 0;
    int minute = 0;
    int second = 0;
};

/// How the user writes numbers and times: what is set for the user on Windows, what the environment asks for on Linux.
/// A failed text sets the last error (`Handles::lastError`). Any thread.
class Locale
{
public:
    virtual ~Locale() = default;
    /// `GetLocaleInfoW` for `LOCALE_USER_DEFAULT` into a buffer of `size` characters. Empty on failure, and where the
    /// text and its terminator do not fit.
    virtual std::wstring information(std::uint32_t type, std::uint32_t size) = 0;
    /// `_localtime64`: seconds since 1970 in the fields of the user's time zone. All fields 0 on failure; Windows
    /// knows no time before 1970.
    virtual LocalTime localTime(std::int64_t seconds) = 0;
    /// `GetDateFormatW` for `LOCALE_USER_DEFAULT` with a format picture such as "d.M.yyyy". Empty on failure.
    virtual std::wstring dateText(const LocalTime& time, const std::wstring& format) = 0;
    /// `GetTimeFormatW` for `LOCALE_USER_DEFAULT` with a format picture such as "HH:mm:ss". Empty on failure.
    virtual std::wstring timeText(const LocalTime& time, const std::wstring& format) = 0;
};

} // namespace Platform
