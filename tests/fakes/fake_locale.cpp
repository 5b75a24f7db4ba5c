#include "fakes/fake_locale.h"

#include <chrono>

namespace Fakes
{

namespace
{

constexpr std::int64_t EndOfCalendar = 32'535'216'000; // 3001-01-01

} // namespace

std::wstring FakeLocale::information(std::uint32_t type, std::uint32_t size)
{
    log_.add(L"information " + std::to_wstring(type) + L' ' + std::to_wstring(size));
    const auto found = texts.find(type);
    return found != texts.end() && found->second.size() < size ? found->second : std::wstring();
}

Platform::LocalTime FakeLocale::localTime(std::int64_t seconds)
{
    if (seconds < 0 || seconds >= EndOfCalendar)
        return {};
    const std::chrono::sys_seconds time{std::chrono::seconds(seconds + offset)};
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(time - day);
    return {static_cast<int>(date.year()),
            static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day())),
            static_cast<int>(std::chrono::weekday(day).c_encoding()),
            static_cast<int>(clock.hours().count()),
            static_cast<int>(clock.minutes().count()),
            static_cast<int>(clock.seconds().count())};
}

} // namespace Fakes
