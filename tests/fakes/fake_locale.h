#pragma once

#include "fakes/fake_call_log.h"
#include "platform/locale.h"
#include "platform/picture_text.h"

#include <map>

namespace Fakes
{

/// A user who writes as in "1,234.5" and "12/31/1999 1:05:09 PM", unless a test says otherwise. Logs "information TYPE
/// SIZE".
class FakeLocale : public Platform::Locale
{
public:
    explicit FakeLocale(CallLog& log) : log_(log) {}

    /// What there is to know about the notation, by its type.
    std::map<std::uint32_t, std::wstring> texts{{Platform::LocaleDecimal, L"."},
                                                {Platform::LocaleThousand, L","},
                                                {Platform::LocaleShortDate, L"M/d/yyyy"},
                                                {Platform::LocaleTimeFormat, L"h:mm:ss tt"}};
    Platform::PictureWords words = Platform::englishWords();
    /// How many seconds the user's clock is ahead of UTC.
    std::int64_t offset = 0;

    std::wstring information(std::uint32_t type, std::uint32_t size) override;
    /// As on Windows: nothing before 1970, and nothing from the year 3001 on.
    Platform::LocalTime localTime(std::int64_t seconds) override;
    std::wstring dateText(const Platform::LocalTime& time, const std::wstring& format) override
    {
        return Platform::datePictureText(time, format, words);
    }
    std::wstring timeText(const Platform::LocalTime& time, const std::wstring& format) override
    {
        return Platform::timePictureText(time, format, words);
    }

private:
    CallLog& log_;
};

} // namespace Fakes
