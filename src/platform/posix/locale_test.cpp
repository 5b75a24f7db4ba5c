#include "platform/locale.h"

#include "platform/handles.h"
#include "platform/paths.h"
#include "platform/platform.h"

#include <gtest/gtest.h>

#include <time.h>

#include <cstdlib>
#include <optional>
#include <string>

namespace
{

/// A variable of the environment for the length of a test.
class Variable
{
public:
    Variable(std::string name, const char* value) : name_(std::move(name))
    {
        if (const char* const before = std::getenv(name_.c_str()))
            before_ = before;
        setenv(name_.c_str(), value, 1);
    }
    ~Variable()
    {
        if (before_)
            setenv(name_.c_str(), before_->c_str(), 1);
        else
            unsetenv(name_.c_str());
        tzset();
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const std::string name_;
    std::optional<std::string> before_;
};

Platform::Locale& locale()
{
    return Platform::nativeSystem().locale;
}

std::uint32_t lastError()
{
    return Platform::nativeSystem().handles.lastError();
}

} // namespace

TEST(PosixLocale, plainNotationHasPointAndComma)
{
    const Variable all("LC_ALL", "C");
    EXPECT_EQ(locale().information(Platform::LocaleDecimal, 8), L".");
    EXPECT_EQ(locale().information(Platform::LocaleThousand, 8), L",");
    EXPECT_EQ(locale().information(Platform::LocaleShortDate, 80), L"MM/dd/yy");
    EXPECT_EQ(locale().information(Platform::LocaleTimeFormat, 80), L"HH:mm:ss");
}

TEST(PosixLocale, aNotationThatIsNotInstalledIsThePlainOne)
{
    const Variable all("LC_ALL", "xx_XX.nowhere");
    EXPECT_EQ(locale().information(Platform::LocaleDecimal, 8), L".");
    EXPECT_EQ(locale().dateText({2007, 3, 5, 1, 0, 0, 0}, L"dddd, d MMMM (ddd, MMM)"), L"Monday, 5 March (Mon, Mar)");
    EXPECT_EQ(locale().timeText({2007, 3, 5, 1, 13, 0, 0}, L"h tt"), L"1 PM");
}

TEST(PosixLocale, aFailureTellsWhy)
{
    locale().information(1, 80);
    EXPECT_EQ(lastError(), 1004u);
    locale().information(Platform::LocaleDecimal, 1);
    EXPECT_EQ(lastError(), Platform::ErrorInsufficientBuffer);
}

TEST(PosixLocale, theTimeIsThatOfTheUsersZone)
{
    const Variable zone("TZ", "EAST-2:30");
    tzset();
    const Platform::LocalTime time = locale().localTime(0);
    EXPECT_EQ(time.year, 1970);
    EXPECT_EQ(time.month, 1);
    EXPECT_EQ(time.day, 1);
    EXPECT_EQ(time.dayOfWeek, 4);
    EXPECT_EQ(time.hour, 2);
    EXPECT_EQ(time.minute, 30);
    EXPECT_EQ(time.second, 0);
}
