#include "windows/framework/secret_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <new>
#include <string_view>

using namespace JobRunner;

namespace
{

/// The characters behind a text that has been emptied without giving its memory back.
std::wstring left(const std::wstring& emptied, std::size_t size)
{
    const wchar_t* const characters = emptied.data();
    return {characters, characters + size};
}

} // namespace

TEST(SecretText, wipingLeavesNoCharacterInTheMemory)
{
    for (const std::wstring& secret : {std::wstring(L"abc"), std::wstring(40, L'x')})
    {
        std::wstring text = secret;
        wipeText(text);
        EXPECT_TRUE(text.empty());
        EXPECT_EQ(left(text, secret.size()), std::wstring(secret.size(), L'\0'));
    }
}

TEST(SecretText, takingATextWipesTheOriginal)
{
    for (const std::wstring& secret : {std::wstring(L"abc"), std::wstring(40, L'x')})
    {
        std::wstring text = secret;
        SecretText holder;
        holder.take(static_cast<std::wstring&&>(text)); // looked at below
        EXPECT_EQ(holder.text(), secret);
        EXPECT_EQ(left(text, secret.size()), std::wstring(secret.size(), L'\0'));
    }
}

TEST(SecretText, takingAnotherTextWipesTheOneBefore)
{
    SecretText holder(std::wstring(40, L'x'));
    holder.take(L"abc");
    EXPECT_EQ(holder.text(), L"abc");
    EXPECT_EQ(left(holder.text(), 40), L"abc" + std::wstring(37, L'\0'));
}

TEST(SecretText, wipesWhatItHoldsAtItsEnd)
{
    alignas(SecretText) unsigned char place[sizeof(SecretText)] = {};
    auto* const holder = new (place) SecretText(L"abc"); // short enough to lie inside
    const std::wstring_view inside(L"abc");
    const auto* const bytes = reinterpret_cast<const unsigned char*>(inside.data());
    const auto holds = [&] { return std::search(place, std::end(place), bytes, bytes + 3 * sizeof(wchar_t)); };
    EXPECT_NE(holds(), std::end(place));
    holder->~SecretText();
    EXPECT_EQ(holds(), std::end(place));
}

TEST(SecretText, comparesExactly)
{
    EXPECT_TRUE(SecretText(L"a") == SecretText(L"a"));
    EXPECT_FALSE(SecretText(L"a") == SecretText(L"A"));
    EXPECT_TRUE(SecretText().empty());
}
