#include "oracle/oracle.h"

#include "oracle/sealed.h"

#include <gtest/gtest.h>

// The judge itself: states that must not be, each made from one that may.

namespace
{

using namespace Faults;

std::string judged(const Order& order, const Files& after, const std::optional<Told>& told = std::nullopt)
{
    return textOf(complaints(order, after, told));
}

/// What an encryption leaves that went well.
Files afterEncryption(const Order& order)
{
    Files after = order.before;
    for (const Work& work : order.works)
    {
        after[work.results[0].path] = sealed(nameOf(work.source), work.results[0].content);
        if (order.fate != Fate::Keep)
            after.erase(work.source);
    }
    return after;
}

Files afterDecryption(const Order& order)
{
    Files after = order.before;
    for (const Work& work : order.works)
    {
        for (const Result& result : work.results)
            after[result.path] = result.content;
        if (order.fate != Fate::Keep)
            after.erase(work.source);
    }
    return after;
}

class TheJudge : public testing::TestWithParam<Fate>
{
protected:
    const Order order = encryption(GetParam());
    const Files done = afterEncryption(order);
    const std::size_t all = order.works.size();
    const bool goes = GetParam() != Fate::Keep;
};

INSTANTIATE_TEST_SUITE_P(OfAnEncryption, TheJudge, testing::Values(Fate::Keep, Fate::Delete, Fate::Wipe));

TEST_P(TheJudge, isContentWithWhatWasAndWithWhatWasOrdered)
{
    EXPECT_EQ(judged(order, order.before), "");
    EXPECT_EQ(judged(order, done, Told{all, 0}), "");
    EXPECT_EQ(textOf(complaintsAtEnd(order, order.before, done)), "");
    EXPECT_EQ(doneOf(order, order.before), 0U);
    EXPECT_EQ(doneOf(order, done), all);
}

TEST_P(TheJudge, allowsATemporaryFileUntilTheNextRunIsOver)
{
    Files after = order.before;
    after["tree/.~one.txt.abcdefgh.zel-part"] = "half of it";
    EXPECT_EQ(judged(order, after), "");
    EXPECT_TRUE(hasTemporaries(after));
    Files end = done;
    end["tree/.~one.txt.abcdefgh.zel-part"] = "half of it";
    EXPECT_NE(textOf(complaintsAtEnd(order, after, end)), "");
}

TEST_P(TheJudge, objectsToALostFile)
{
    Files after = order.before;
    after.erase("large.bin");
    EXPECT_NE(judged(order, after), "");
}

TEST_P(TheJudge, objectsToAPartialResult)
{
    Files after = order.before;
    const std::string whole = done.at("large.bin.zel");
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, whole.size() / 2, whole.size() - 1})
    {
        after["large.bin.zel"] = whole.substr(0, size);
        EXPECT_NE(judged(order, after), "") << size;
    }
    after["large.bin.zel"] = whole + "x";
    EXPECT_NE(judged(order, after), "");
}

TEST_P(TheJudge, objectsToAResultOfAnotherContent)
{
    Files after = order.before;
    after["tree/one.txt.zel"] = sealed("one.txt", "something else");
    EXPECT_NE(judged(order, after), "");
}

TEST_P(TheJudge, objectsToAChangedByteAnywhereInAResult)
{
    for (const std::size_t place : {std::size_t{3}, std::size_t{40}, std::size_t{300}})
    {
        Files after = done;
        after["tree/one.txt.zel"].at(place) ^= 1;
        EXPECT_NE(judged(order, after), "") << place;
    }
}

TEST_P(TheJudge, allowsAChangedSourceOnlyToAWipeBehindItsResult)
{
    Files after = order.before;
    after["large.bin"][5] ^= 1;
    EXPECT_NE(judged(order, after), "") << "without a result";
    after["large.bin.zel"] = done.at("large.bin.zel");
    EXPECT_EQ(judged(order, after).empty(), GetParam() == Fate::Wipe);
    after["large.bin.zel"].pop_back();
    EXPECT_NE(judged(order, after), "") << "with half a result";
}

TEST_P(TheJudge, objectsToAMissingSourceWhereItIsToStay)
{
    Files after = done;
    after.erase("tree/two.txt");
    EXPECT_EQ(judged(order, after).empty(), goes);
}

TEST_P(TheJudge, objectsToAFileThatNobodyAskedFor)
{
    Files after = done;
    after["tree/strange.txt"] = "";
    EXPECT_NE(judged(order, after), "");
}

TEST_P(TheJudge, objectsToAChangeBesideTheJob)
{
    Files after = done;
    after["beside.txt"] += "x";
    EXPECT_NE(judged(order, after), "");
    after.erase("beside.txt");
    EXPECT_NE(judged(order, after), "");
}

TEST_P(TheJudge, knowsTheEmptyFileThatAWipeHasRenamed)
{
    Files after = done;
    after["tree/abcdefghijkl"] = "";
    EXPECT_EQ(judged(order, after).empty(), GetParam() == Fate::Wipe);
    for (const char* const source : {"large.bin", "tree/one.txt"})
    {
        after["tree/abcdefghijkl"] = order.before.at(source);
        EXPECT_NE(judged(order, after), "") << "it can still be read";
    }
    after["tree/abcdefghijk"] = "";
    EXPECT_NE(judged(order, after), "") << "another kind of name";
}

TEST_P(TheJudge, objectsToMoreThatWasToldThanDone)
{
    Files after = done;
    EXPECT_NE(judged(order, after, Told{all + 1, 0}), "");
    after.erase("tree/two.txt.zel");
    after["tree/two.txt"] = order.before.at("tree/two.txt");
    EXPECT_EQ(judged(order, after, Told{all - 1, 1}), "");
    EXPECT_NE(judged(order, after, Told{all, 0}), "");
}

TEST_P(TheJudge, objectsToAResultThatIsStillMissingAtTheEnd)
{
    Files after = done;
    after.erase("tree/two.txt.zel");
    after["tree/two.txt"] = order.before.at("tree/two.txt");
    EXPECT_EQ(judged(order, after), "");
    EXPECT_NE(textOf(complaintsAtEnd(order, order.before, after)), "");
}

TEST(TheJudgeOfADecryption, objectsToHalfAResultAndToALostFile)
{
    for (const Fate fate : {Fate::Keep, Fate::Delete})
    {
        const Order order = decryption(fate);
        const Files done = afterDecryption(order);
        EXPECT_EQ(judged(order, order.before), "");
        EXPECT_EQ(judged(order, done, Told{order.works.size(), 0}), "");
        Files after = order.before;
        after["large.bin"] = done.at("large.bin").substr(0, 1000);
        EXPECT_NE(judged(order, after), "");
        after = done;
        after.erase("tree/one.txt");
        EXPECT_EQ(judged(order, after).empty(), fate == Fate::Keep) << "the encrypted file is there or not";
    }
}

TEST(TheJudgeOfAPackage, objectsToAnythingThatIsNone)
{
    const Order order = packing(Fate::Delete);
    Files after = order.before;
    after["large.bin.exe"] = "MZ";
    EXPECT_NE(judged(order, after), "");
    after["large.bin.exe"] = sealed("large.bin", "x");
    EXPECT_NE(judged(order, after), "");
    after.erase("large.bin.exe");
    after.erase("large.bin");
    EXPECT_NE(judged(order, after), "");
}

TEST(TheJudgeOfAPackage, objectsToAnotherContentInIt)
{
    const Order order = packing(Fate::Keep);
    Files after = order.before;
    for (const std::string content : {"another one", "another two"})
    {
        after["large.bin.exe"] = packed({{"two.txt", content}});
        EXPECT_EQ(judged(order, after).empty(), content == "another one");
    }
    after["large.bin.exe"].pop_back();
    EXPECT_NE(judged(order, after), "");
}

TEST(TheJudgeOfAPackage, findsTheRestInThePackageOfALaterRun)
{
    const Order order = packing(Fate::Delete);
    Files whole;
    for (const Work& work : order.works)
        whole[work.results[0].packedName] = work.results[0].content;
    Files after{{"beside.txt", order.before.at("beside.txt")}, {"large.bin.exe", packed(whole)}};
    EXPECT_EQ(judged(order, after, Told{order.works.size(), 0}), "");
    const Files rest{*whole.find("two.txt")};
    whole.erase("two.txt");
    after["large.bin.exe"] = packed(whole);
    EXPECT_NE(judged(order, after), "");
    after["tree/two.txt.exe"] = packed(rest);
    EXPECT_EQ(judged(order, after), "");
}

TEST(TheJudgeOfARemoval, objectsToAFileThatOnlyAWipeMayChange)
{
    for (const Fate fate : {Fate::Delete, Fate::Wipe})
    {
        const Order order = removal(fate);
        Files after = order.before;
        after["large.bin"][0] ^= 1;
        EXPECT_EQ(judged(order, after).empty(), fate == Fate::Wipe);
        EXPECT_NE(textOf(complaintsAtEnd(order, order.before, after)), "") << "it should be gone";
        EXPECT_NE(judged(order, order.before, Told{1, 0}), "");
        EXPECT_EQ(judged(order, {{"beside.txt", order.before.at("beside.txt")}}, Told{8, 0}), "")
            << "the folder counts when it was asked about";
    }
}

} // namespace
