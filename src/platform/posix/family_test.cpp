#include "platform/posix/family.h"

#include <gtest/gtest.h>

using namespace Platform;

namespace
{

constexpr std::uint32_t Us = 100;
constexpr std::uint32_t Init = 1;

/// The processes of a machine, whose parents change as they do there.
class FamilyTest : public testing::Test
{
protected:
    void start(std::uint32_t id, std::uint32_t parent) { running_[id] = {id, parent, ++now_, false, {}}; }

    void startOurs(std::uint32_t id)
    {
        start(id, Us);
        family_.onStarted(running_[id]);
    }

    /// Its children go to this process, as those of the family do, or to the first process of the system.
    void end(std::uint32_t id, std::uint32_t newParent = Us)
    {
        ++now_;
        running_.erase(id);
        for (auto& [child, record] : running_)
            if (record.parent == id)
                record.parent = newParent;
    }

    void endSeen(std::uint32_t id)
    {
        end(id);
        family_.onEndSeen(id, now_);
    }

    std::uint32_t parentOf(std::uint32_t id)
    {
        std::vector<ProcessRecord> records;
        for (const auto& [each, record] : running_)
            records.push_back(record);
        family_.setParents(records);
        for (const ProcessRecord& record : records)
            if (record.id == id)
                return record.parent;
        return 0;
    }

    bool isFamily(std::uint32_t id) { return family_.contains(running_[id]); }

    Family family_{Us};

private:
    std::map<std::uint32_t, ProcessRecord> running_;
    std::uint64_t now_ = 1000;
};

} // namespace

TEST_F(FamilyTest, aParentIsWhoeverStartedTheProcess)
{
    start(Us, Init);
    start(150, Init);
    startOurs(200);
    start(300, 200);
    EXPECT_EQ(parentOf(Us), Init);
    EXPECT_EQ(parentOf(150), Init);
    EXPECT_EQ(parentOf(200), Us);
    EXPECT_EQ(parentOf(300), 200u);
}

TEST_F(FamilyTest, theParentThatWasSeenOnceStays)
{
    startOurs(200);
    start(300, 200);
    EXPECT_EQ(parentOf(300), 200u);
    end(200);
    EXPECT_EQ(parentOf(300), 200u);
    endSeen(200);
    EXPECT_EQ(parentOf(300), 200u);
}

TEST_F(FamilyTest, aProcessOfOthersKeepsItsParentToo)
{
    start(150, Init);
    start(151, 150);
    EXPECT_EQ(parentOf(151), 150u);
    end(150, Init);
    EXPECT_EQ(parentOf(151), 150u);
}

TEST_F(FamilyTest, whatAnUnseenEndLeavesBehindIsAChildOfThisProcess)
{
    startOurs(200);
    start(300, 200);
    end(200);
    EXPECT_EQ(parentOf(300), Us);
    EXPECT_FALSE(isFamily(300)) << "it may be a child of other parts of the program";
    start(400, 300);
    endSeen(300);
    EXPECT_EQ(parentOf(400), 300u) << "and yet it is followed";
    EXPECT_TRUE(isFamily(400));
}

TEST_F(FamilyTest, anEndThatIsSeenOnlyAfterTheNextListCountsAsWell)
{
    startOurs(200);
    start(300, 200);
    EXPECT_EQ(parentOf(300), 200u);
    end(200);
    EXPECT_EQ(parentOf(300), 200u);
    start(400, 300);
    endSeen(200);
    end(300);
    EXPECT_EQ(parentOf(400), 200u);
}

TEST_F(FamilyTest, whatASeenEndLeavesBehindIsAChildOfTheEndedOne)
{
    startOurs(200);
    EXPECT_EQ(parentOf(200), Us);
    start(300, 200);
    endSeen(200);
    EXPECT_EQ(parentOf(300), 200u);
    EXPECT_TRUE(isFamily(300));
}

TEST_F(FamilyTest, aHandOnFromOneToTheNextIsFollowed)
{
    startOurs(200);
    start(300, 200);
    endSeen(200);
    EXPECT_EQ(parentOf(300), 200u);
    start(400, 300);
    endSeen(300);
    EXPECT_EQ(parentOf(400), 300u);
    start(350, 400); // the ids have begun again
    endSeen(400);
    EXPECT_EQ(parentOf(350), 400u);
}

TEST_F(FamilyTest, whatANeverListedProcessLeavesBehindIsAChildOfTheLastEndSeen)
{
    startOurs(500);
    EXPECT_EQ(parentOf(500), Us);
    start(600, 500);
    start(700, 600);
    end(600);
    endSeen(500);
    EXPECT_EQ(parentOf(700), 500u);
}

TEST_F(FamilyTest, whatANeverListedProcessLeavesBehindEarlierIsFamilyAsWell)
{
    startOurs(200);
    start(300, 200);
    start(400, 300);
    end(300);
    EXPECT_EQ(parentOf(400), Us);
    start(500, 400);
    endSeen(400);
    EXPECT_EQ(parentOf(500), 400u);
}

TEST_F(FamilyTest, whatWasStartedAfterAnEndWasNotLeftBehindByIt)
{
    startOurs(200);
    endSeen(200);
    start(300, Us);
    EXPECT_EQ(parentOf(300), Us);
    EXPECT_FALSE(isFamily(300)) << "other parts of this program look after their own children";
}

TEST_F(FamilyTest, theEndOfAProcessOfOthersMakesNoDifference)
{
    startOurs(200);
    start(150, Init);
    EXPECT_EQ(parentOf(150), Init);
    start(300, 200);
    endSeen(150);
    end(200);
    EXPECT_EQ(parentOf(300), Us);
}

TEST_F(FamilyTest, anotherProcessWithAnIdThatWasUsedBeforeIsAnotherProcess)
{
    startOurs(200);
    start(300, 200);
    EXPECT_EQ(parentOf(300), 200u);
    end(300);
    start(300, Init);
    EXPECT_EQ(parentOf(300), Init);
    EXPECT_FALSE(isFamily(300));
}

TEST_F(FamilyTest, childrenListedBeforeTheirParentsAreFamilyToo)
{
    startOurs(500);
    start(300, 500);
    start(200, 300);
    EXPECT_EQ(parentOf(200), 300u);
    EXPECT_TRUE(isFamily(200));
    EXPECT_TRUE(isFamily(300));
}
