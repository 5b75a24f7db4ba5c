#include "commands/testing_support.h"
#include "telemetry/event_tracker.h"

#include <map>

using namespace Fakes;
using namespace JobRunner;

TEST_F(AnEncryption, reportsAKeyFileByItsTypeAndNothingForAnyOtherType)
{
    const std::map<int, Calls> events{{1, {usage(L"use_keyfile_symmetric, , none")}},
                                      {2, {usage(L"use_keyfile_public_rsa, , none")}},
                                      {0, {}},
                                      {3, {}},
                                      {4, {}}};
    for (const auto& [type, keyEvents] : events)
    {
        engine.keyFiles[KeyFile].type = type;
        run({L"", KeyFile, 3, 1, L""});
        Calls expected{usage(L"count, , none")};
        expected.insert(expected.end(), keyEvents.begin(), keyEvents.end());
        expected.push_back(usage(L"use_alg_aes-256, , none"));
        expected.push_back(usage(L"use_destiny_delete, , none"));
        EXPECT_EQ(parameterEvents(), expected) << type;
    }
}

TEST_F(AnEncryption, countsARiddleTwiceWhenThereIsAnExtraTextToo)
{
    const auto riddles = [this](const wchar_t* extraText, const wchar_t* riddle)
    {
        answers.extraText = extraText;
        run({L"secret", L"", 3, 1, riddle});
        return log.callsOf(usage(L"use_riddle, , none")).size();
    };
    EXPECT_EQ(riddles(L"", L""), 0U);
    EXPECT_EQ(riddles(L"extra", L""), 1U);
    EXPECT_EQ(riddles(L"", L"riddle"), 1U);
    EXPECT_EQ(riddles(L"extra", L"riddle"), 2U);
}

TEST_F(AnEncryption, reportsNumbersOutsideTheTablesAsTheyStand)
{
    run({L"secret", L"", 17, 3, L""});
    const Calls expected{usage(L"count, , none"), usage(L"use_password, , none"), usage(L"use_alg_, , none"),
                         usage(L"use_destiny_unknown, , none")};
    EXPECT_EQ(parameterEvents(), expected);
    EXPECT_TRUE(log.contains(L"options.SetAlgorithm(17)"));
    EXPECT_TRUE(log.contains(L"options.SetDestiny(3)"));
}

TEST_F(AnEncryption, countsTheBytesOfAFileAtHalfOnlyWhenItIsWiped)
{
    for (const std::uint32_t destiny : {0U, 1U, 2U, 3U})
    {
        // Half of the file's bytes are reported: a quarter of its way when it is wiped afterwards.
        engine.script = reportHalfAFile;
        run({L"secret", L"", 3, destiny, L""});
        EXPECT_EQ(views.factory.progressViews.back()->last(L"setElapsedBytes"), destiny == 2 ? L"250" : L"500")
            << destiny;
    }
}

TEST_F(AnEncryption, opensItsProgressAsAnEncryption)
{
    engine.files = {{L"C:\\a.txt", 10, 0}};
    run({L"secret", L"", 3, 1, L""});
    EXPECT_EQ(views.factory.progressViews.back()->operation(), 1);
    EXPECT_FALSE(views.factory.progressViews.back()->open());
}

TEST_F(AnEncryption, thatIsCancelledReportsItsCountsAndThenTheCancel)
{
    engine.script = [this](const EngineCallbacks& callbacks) { cancelInTheSecondFile(callbacks); };
    run({L"secret", L"", 3, 1, L""});
    const Calls expected{usage(L"processed_file_count, , 1"), usage(L"failed_file_count, , 0"),
                         usage(L"processed_total_size_mb, , 2"), usage(L"cancelled, , none")};
    EXPECT_EQ(lastTracked(4), expected);
}

TEST_F(AnEncryption, reportsZeroesForAnEmptyListAndItsCountsWhenEveryFileFails)
{
    run({L"secret", L"", 3, 1, L""});
    EXPECT_EQ(lastTracked(3), (Calls{usage(L"processed_file_count, , 0"), usage(L"failed_file_count, , 0"),
                                     usage(L"processed_total_size_mb, , 0")}));
    engine.files = {{L"C:\\a.txt", 10, 1}, {L"C:\\b.txt", 10, 1}};
    gui.fileErrorAnswers = {1, 1};
    run({L"secret", L"", 3, 1, L""});
    EXPECT_TRUE(log.contains(usage(L"processed_file_count, , 0")));
    EXPECT_TRUE(log.contains(usage(L"failed_file_count, , 2")));
    EXPECT_EQ(gui.fileErrors().at(0), (FileErrorQuestion{L"", L"", L"C:\\a.txt", L"", L"Access is denied."}));
}

TEST_F(AnEncryption, cutsAFileThatLacksOneByteOfAMebibyteToNothing)
{
    engine.files = {{L"C:\\a.txt", 1'048'575, 0}};
    run({L"secret", L"", 3, 1, L""});
    EXPECT_EQ(lastTracked(1), Calls{usage(L"processed_total_size_mb, , 0")});
}

TEST_F(AnEncryption, runsTheSameWithATrackerThatReportsToNobody)
{
    const auto runWith = [this](const Halden::ZEL::Telemetry::EventTrackerPtr& used)
    {
        answers.extraText = L"extra";
        engine.files = {{L"C:\\a.txt", 3U << 20, 0}};
        gui.encryptionAnswers = {{L"", KeyFile, 3, 2, L"riddle"}};
        EncryptCommand command(document(), &gui, used);
        log.clear();
        command.Run();
        Calls all = log.calls();
        // The tracker asks for its setting each time.
        std::erase_if(all, [](const std::wstring& call)
                      { return call.starts_with(L"Track") || call.starts_with(L"openKey"); });
        return all;
    };
    const Calls reported = runWith(tracker);
    EXPECT_TRUE(log.contains(usage(L"count, , none")));
    EXPECT_EQ(runWith(std::make_shared<Halden::ZEL::Telemetry::EventTracker>()), reported);
}
