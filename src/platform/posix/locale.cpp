#include "platform/locale.h"

#include "platform/picture_text.h"
#include "platform/posix/concerns.h"
#include "platform/posix/time_format.h"
#include "platform/utf8.h"

#include <langinfo.h>
#include <locale.h>
#include <time.h>

#include <cstdlib>

namespace Platform
{

namespace
{

constexpr std::uint32_t ErrorInvalidFlags = 1004;

/// The notation that the user's environment asks for. The program itself runs in "C.UTF-8", whatever is asked for.
class UserNotation
{
public:
    UserNotation() : notation_(newlocale(LC_ALL_MASK, "C", nullptr))
    {
        // One at a time: where one of them names what is not installed, the others hold all the same.
        for (const int category : {LC_CTYPE_MASK, LC_NUMERIC_MASK, LC_TIME_MASK})
            if (const locale_t more = newlocale(category, "", notation_))
                notation_ = more;
    }
    ~UserNotation() { freelocale(notation_); }
    UserNotation(const UserNotation&) = delete;
    UserNotation& operator=(const UserNotation&) = delete;

    std::wstring text(nl_item item) const
    {
        const char* const narrow = nl_langinfo_l(item, notation_);
        const locale_t before = uselocale(notation_);
        const std::size_t length = std::mbstowcs(nullptr, narrow, 0);
        std::wstring wide;
        if (length != static_cast<std::size_t>(-1))
        {
            wide.resize(length);
            std::mbstowcs(wide.data(), narrow, length);
        }
        else
            wide = fromUtf8(narrow);
        uselocale(before);
        return wide;
    }

    std::wstring picture(nl_item item) const { return pictureOfFormat(text(item), text(T_FMT_AMPM)); }

    PictureWords words() const
    {
        PictureWords words;
        for (int day = 0; day < 7; ++day)
        {
            words.days[static_cast<std::size_t>(day)] = text(DAY_1 + day);
            words.shortDays[static_cast<std::size_t>(day)] = text(ABDAY_1 + day);
        }
        for (int month = 0; month < 12; ++month)
        {
            words.months[static_cast<std::size_t>(month)] = text(MON_1 + month);
            words.shortMonths[static_cast<std::size_t>(month)] = text(ABMON_1 + month);
        }
        words.morning = text(AM_STR);
        words.afternoon = text(PM_STR);
        return words;
    }

private:
    locale_t notation_;
};

std::wstring textOf(const UserNotation& notation, std::uint32_t type)
{
    if (type == LocaleDecimal)
        return notation.text(RADIXCHAR);
    if (type == LocaleThousand)
        return groupSeparator(notation.text(THOUSEP), notation.text(RADIXCHAR));
    if (type == LocaleShortDate)
        return notation.picture(D_FMT);
    return notation.picture(T_FMT);
}

std::wstring fail(std::uint32_t error)
{
    posixHandles().setLastError(error);
    return {};
}

class PosixLocale : public Locale
{
public:
    std::wstring information(std::uint32_t type, std::uint32_t size) override
    {
        if (type != LocaleDecimal && type != LocaleThousand && type != LocaleShortDate && type != LocaleTimeFormat)
            return fail(ErrorInvalidFlags);
        std::wstring text = textOf(UserNotation(), type);
        return text.size() < size ? text : fail(ErrorInsufficientBuffer);
    }

    LocalTime localTime(std::int64_t seconds) override
    {
        const time_t time = seconds;
        tm fields{};
        if (!localtime_r(&time, &fields))
            return {};
        return {fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday, fields.tm_wday,
                fields.tm_hour,        fields.tm_min,     fields.tm_sec};
    }

    std::wstring dateText(const LocalTime& time, const std::wstring& format) override
    {
        return datePictureText(time, format, UserNotation().words());
    }

    std::wstring timeText(const LocalTime& time, const std::wstring& format) override
    {
        return timePictureText(time, format, UserNotation().words());
    }
};

} // namespace

Locale& posixLocale()
{
    static PosixLocale concern;
    return concern;
}

} // namespace Platform
