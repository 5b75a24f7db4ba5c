#include "platform/narrow_text.h"

#include <gtest/gtest.h>

#include <thread>

#include <windows.h>

namespace
{

/// Runs on a thread of that locale.
template <class Action> auto in(LANGID language, const Action& action)
{
    decltype(action()) result;
    std::thread thread(
        [&]
        {
            SetThreadLocale(MAKELCID(language, SORT_DEFAULT));
            result = action();
        });
    thread.join();
    return result;
}

std::wstring widenedIn(LANGID language, std::string_view text)
{
    return in(language, [&] { return Platform::widenThreadText(text); });
}

std::string narrowedIn(LANGID language, std::wstring_view text)
{
    return in(language, [&] { return Platform::narrowThreadText(text); });
}

} // namespace

TEST(ANarrowText, isReadInTheCodePageOfTheThread)
{
    EXPECT_EQ(widenedIn(MAKELANGID(LANG_RUSSIAN, SUBLANG_DEFAULT), "\xCF\xC0"), L"\u041F\u0410");
    EXPECT_EQ(widenedIn(MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN), "\xCF\xC0"), L"\u00CF\u00C0");
}

TEST(ANarrowText, isWrittenInTheCodePageOfTheThread)
{
    EXPECT_EQ(narrowedIn(MAKELANGID(LANG_RUSSIAN, SUBLANG_DEFAULT), L"\u041F\u0410"), "\xCF\xC0");
    EXPECT_EQ(narrowedIn(MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN), L"\u00CF\u00C0"), "\xCF\xC0");
    EXPECT_EQ(narrowedIn(MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN), L"\u041F"), "?");
}
