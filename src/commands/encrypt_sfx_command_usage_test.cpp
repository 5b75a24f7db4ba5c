#include "commands/testing_support.h"
#include "telemetry/usage_names.h"

#include <map>

using namespace Fakes;
using namespace JobRunner;
using Halden::ZEL::Telemetry::MakerDomain;

TEST_F(ASelfExtractingEncryption, takesADestinyThatIsNeitherZeroNorOneAsTwo)
{
    for (const std::uint32_t destiny : {2U, 3U, 7U, 0x80000000U, 0xFFFFFFFFU})
    {
        answers.destiny = destiny;
        runWithPassword();
        EXPECT_EQ(shownWindow().calls.at(1), L"setDestiny 2") << destiny;
        EXPECT_TRUE(log.contains(L"options.SetDestiny(2)"));
        EXPECT_TRUE(log.contains(usage(L"use_destiny_wipe, , none")));
    }
}

TEST_F(ASelfExtractingEncryption, takesADestinyOfTheViewInTheSameWay)
{
    runWithPassword([](EncryptionPasswordRecord& fields) { fields.destiny = 7; });
    EXPECT_TRUE(log.contains(L"options.SetDestiny(2)"));
    EXPECT_TRUE(log.contains(usage(L"use_destiny_wipe, , none")));
}

TEST_F(ASelfExtractingEncryption, reportsTheKeyUnderThePlainCategoryAndTheRestUnderItsOwn)
{
    const std::map<int, Calls> events{{1, {plainUsage(L"use_keyfile_symmetric, , none")}},
                                      {2, {plainUsage(L"use_keyfile_public_rsa, , none")}},
                                      {0, {}},
                                      {3, {}},
                                      {4, {}}};
    for (const auto& [type, keyEvents] : events)
    {
        engine.keyFiles[KeyFile].type = type;
        runWithKeyFile(KeyFile);
        EXPECT_EQ(log.callsOf(L"TrackEvent(winzel encryption usage"), keyEvents) << type;
        EXPECT_EQ(log.callsOf(L"TrackEvent(winzel encryption sfx"),
                  (Calls{usage(L"use_alg_aes-256, , none"), usage(L"use_destiny_leave, , none"),
                         usage(L"processed_file_count, , 0"), usage(L"failed_file_count, , 0"),
                         usage(L"processed_total_size_mb, , 0")}));
    }
}

TEST_F(ASelfExtractingEncryption, hasNoExtraTextAndCountsARiddleOnce)
{
    answers.extraText = L"extra";
    runWithPassword([](EncryptionPasswordRecord& fields) { fields.riddle = L"riddle"; });
    EXPECT_TRUE(log.callsOf(L"options.SetExtraText").empty());
    EXPECT_TRUE(log.callsOf(L"document.GetExtraText").empty());
    EXPECT_EQ(log.callsOf(usage(L"use_riddle, , none")).size(), 1U);
    runWithPassword();
    EXPECT_TRUE(log.callsOf(usage(L"use_riddle, , none")).empty());
    EXPECT_TRUE(log.contains(L"options.SetRiddle()"));
}

TEST_F(ASelfExtractingEncryption, callsACommentWithoutTheMakersDomainTheUsersOwn)
{
    const std::wstring domain = MakerDomain;
    const std::map<std::wstring, bool> comments{{L"Packed by me.", true},
                                                {domain, false},
                                                {L"See https://" + domain + L"/help.", false},
                                                {L"WWW" + domain.substr(3), true},
                                                {L"", true}};
    for (const auto& [comment, custom] : comments)
    {
        answers.sfxComment = comment;
        runWithPassword();
        EXPECT_TRUE(log.contains(L"options.SetSfxComment(" + comment + L")"));
        EXPECT_EQ(log.contains(usage(L"use_custom_sfx_comment, , none")), custom) << comment.size();
    }
}

TEST_F(ASelfExtractingEncryption, savesACommentOnlyWhenItIsAskedTo)
{
    runWithPassword([](EncryptionPasswordRecord& fields) { fields.sfxComment = L"mine"; });
    EXPECT_TRUE(log.callsOf(L"zelplatform.").empty());
    EXPECT_TRUE(log.callsOf(viewEvent(L"save_sfx_comment")).empty());
}

TEST_F(ASelfExtractingEncryption, savesAnEmptyCommentWithoutAnEvent)
{
    runWithPassword(
        [](EncryptionPasswordRecord& fields)
        {
            fields.sfxComment.clear();
            fields.sfxCommentDefault = true;
        });
    const Calls after = behind(usage(L"use_custom_sfx_comment, , none"));
    ASSERT_GE(after.size(), 7U);
    const Calls expected{L"zelplatform.createFactory",
                         L"zelplatform.CreateJobDocumentStore",
                         L"store.SaveSfxComment()",
                         L"store.Release",
                         L"zelplatform.Release",
                         L"factory.Release",
                         WindowDestroyed};
    EXPECT_EQ(Calls(after.begin(), after.begin() + 7), expected);
}

TEST_F(ASelfExtractingEncryption, countsTheBytesOfAFileAtHalfOnlyWhenItIsWiped)
{
    for (const int destiny : {0, 1, 2, 7})
    {
        engine.script = reportHalfAFile;
        runWithPassword([destiny](EncryptionPasswordRecord& fields) { fields.destiny = destiny; });
        EXPECT_EQ(views.factory.progressViews.back()->last(L"setElapsedBytes"), destiny >= 2 ? L"250" : L"500")
            << destiny;
    }
}

TEST_F(ASelfExtractingEncryption, opensItsProgressAsASelfExtractingOne)
{
    engine.files = {{L"C:\\a.txt", 10, 0}};
    runWithPassword();
    EXPECT_EQ(views.factory.progressViews.back()->operation(), 2);
}

TEST_F(ASelfExtractingEncryption, thatIsCancelledReportsItsCountsAndThenTheCancelUnderItsOwnCategory)
{
    engine.script = [this](const EngineCallbacks& callbacks) { cancelInTheSecondFile(callbacks); };
    runWithPassword();
    const Calls expected{usage(L"processed_file_count, , 1"), usage(L"failed_file_count, , 0"),
                         usage(L"processed_total_size_mb, , 2"), usage(L"cancelled, , none")};
    EXPECT_EQ(lastTracked(4), expected);
}
