#include "watched_document.h"

#include <gtest/gtest.h>

// The name of a document reaches its application as it is, and the document is watched under it.

namespace EndToEnd
{

namespace
{

constexpr std::uint32_t LongestDelay = 1000;

class ADocumentWithTheName : public testing::TestWithParam<const char*>
{
};

TEST_P(ADocumentWithTheName, isHeldByItsApplicationAndWaitedFor)
{
    WatchedDocument document(GetParam());
    const auto result = document.open(L"hold 4200 --stay 2000");
    EXPECT_TRUE(result.opened);
    EXPECT_TRUE(document.isNoted("holds"));
    ASSERT_TRUE(document.isNoted("released"));
    EXPECT_LE(result.returned - document.noted("released"), LongestDelay);
    EXPECT_FALSE(document.isNoted("ends")) << "it is alone in its folder";
    document.noted("ends");
}

INSTANTIATE_TEST_SUITE_P(OnLinux, ADocumentWithTheName,
                         testing::Values("-n [a] *?.txt", "it's \"quoted\" $(so) `or` %f \\ so; & | < >\nand on",
                                         "no text \xFF\xFE", "*"));

} // namespace

} // namespace EndToEnd
