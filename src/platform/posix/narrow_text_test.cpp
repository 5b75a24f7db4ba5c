#include "platform/narrow_text.h"

#include <gtest/gtest.h>

TEST(ANarrowText, isReadAsUtf8)
{
    EXPECT_EQ(Platform::widenThreadText("\xD0\x9F \xE2\x82\xAC"), L"\u041F \u20AC");
}

TEST(ANarrowText, isWrittenAsUtf8)
{
    EXPECT_EQ(Platform::narrowThreadText(L"\u041F \u20AC \xDCFF"), "\xD0\x9F \xE2\x82\xAC \xFF");
}
