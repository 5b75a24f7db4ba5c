#include "platform/narrow_text.h"

#include <gtest/gtest.h>

#include <thread>

#include <windows.h>

namespace
{

/// Widens on a thread of that locale.
std::wstring widenedIn(LANGID language, std::string_view text)
{
    std::wstring wide;
    std::thread thread(
        [&]
        {
            SetThreadLocale(MAKELCID(language, SORT_DEFAULT));
            wide = Platform::widenThreadText(text);
        });
    thread.join();
    return wide;
}

} // namespace

TEST(ANarrowText, isReadInTheCodePageOfTheThread)
{
    EXPECT_EQ(widenedIn(MAKELANGID(LANG_RUSSIAN, SUBLANG_DEFAULT), "\xCF\xC0"), L"\u041F\u0410");
    EXPECT_EQ(widenedIn(MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN), "\xCF\xC0"), L"\u00CF\u00C0");
}
