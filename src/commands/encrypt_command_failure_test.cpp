#include "commands/testing_support.h"
#include "interfaces/vaultcore/exception.h"

#include <stdexcept>
#include <thread>

using namespace Fakes;
using namespace JobRunner;

TEST_F(AnEncryption, whoseKeyFileDoesNotLoadTellsTheUserAndEnds)
{
    run({L"", L"C:\\none", 3, 2, L"riddle"});
    const Calls expected{
        L"createFactory",
        L"factory.LoadKeyFile(C:\\none)",
        L"TrackViewEvent(err_cannot_load_key_file, , none)",
        L"messageBox Cannot load key file: No key file: C:\\none",
        L"factory.Release",
        L"options.Release",
        L"events.Release",
        L"encryptor.Release",
        L"factory.Release",
    };
    EXPECT_EQ(behind(L"gui.showEncryptionPasswordWindow(14, 0)"), expected);
    const std::vector<ShownBox> boxes{{L"Cannot load key file: No key file: C:\\none", L"Cannot load key file", 0x40}};
    EXPECT_EQ(platform.messageBoxes.boxes(), boxes);
    EXPECT_EQ(gui.calls().size(), 1U) << "the window is not shown again";
    EXPECT_EQ(engine.liveObjects(), 0);
}

TEST_F(AnEncryption, whoseKeyFileCannotEncryptTellsTheUserAndEnds)
{
    engine.keyFailure = L"Wrong kind of key.";
    run({L"", KeyFile, 3, 2, L""});
    const Calls expected{
        L"key.Release",
        L"TrackViewEvent(err_cannot_load_key_file, , none)",
        L"messageBox Cannot load key file: Wrong kind of key.",
        L"factory.Release",
        L"options.Release",
        L"events.Release",
        L"encryptor.Release",
        L"factory.Release",
    };
    EXPECT_EQ(behind(L"options.SetKey(C:\\k.zelkey)"), expected);
    EXPECT_EQ(engine.startedWith, nullptr);
}

TEST_F(AnEncryption, doesNotCatchTheFailureOfAPasswordKey)
{
    engine.passwordFailure = L"No memory.";
    EXPECT_THROW(run({L"secret", L"", 3, 1, L""}), VaultCore::Exception);
    engine.passwordFailure.clear();
    engine.keyFailure = L"No memory.";
    EXPECT_THROW(run({L"secret", L"", 3, 1, L""}), VaultCore::Exception);
    EXPECT_TRUE(platform.messageBoxes.boxes().empty());
    EXPECT_EQ(log.callsOf(L"TrackViewEvent").size(), 0U);
    EXPECT_EQ(engine.liveObjects(), 0);
}

TEST_F(AnEncryption, doesNotCatchTheFailureOfTheSecondLoadOfTheKeyFile)
{
    engine.keyFiles[KeyFile].loads = 1;
    EXPECT_THROW(run({L"", KeyFile, 3, 1, L"riddle"}), VaultCore::Exception);
    const auto all = log.calls();
    const auto second = std::find(all.begin(), all.end(), usage(L"count, , none")) + 1;
    const Calls expected{L"factory.LoadKeyFile(C:\\k.zelkey)",
                         L"factory.Release",
                         L"options.Release",
                         L"events.Release",
                         L"encryptor.Release",
                         L"factory.Release",
                         L"document.Release"};
    EXPECT_EQ(Calls(second, all.end()), expected);
    EXPECT_TRUE(log.contains(L"options.SetExtraText()")) << "the options were complete";
    EXPECT_TRUE(platform.messageBoxes.boxes().empty());
}

TEST_F(AnEncryption, doesNotCatchAKeyThatCannotTellItsType)
{
    engine.keyTypeFailure = L"No type.";
    EXPECT_THROW(run({L"", KeyFile, 3, 1, L""}), VaultCore::Exception);
    EXPECT_TRUE(platform.messageBoxes.boxes().empty());
    EXPECT_EQ(engine.liveObjects(), 0);
}

TEST_F(AnEncryption, tellsOfItsKeyFileOnItsOwnThreadAndNotOnTheFirst)
{
    std::thread::id boxThread;
    platform.messageBoxes.whileShown = [&] { boxThread = std::this_thread::get_id(); };
    gui.encryptionAnswers = {{L"", L"C:\\none", 3, 1, L""}};
    EncryptCommand command(document(), &gui, tracker);
    std::thread job([&] { command.Run(); });
    const std::thread::id jobThread = job.get_id();
    job.join();
    EXPECT_EQ(boxThread, jobThread);
}

TEST_F(AnEncryption, releasesTheEngineInOrderWhenAnExceptionLeavesTheRun)
{
    engine.onStart = [] { throw std::runtime_error("start"); };
    gui.encryptionAnswers = {{L"secret", L"", 3, 1, L""}};
    EncryptCommand command(document(), &gui, tracker);
    EXPECT_THROW(command.Run(), std::runtime_error);
    const Calls expected{L"encryptor.Start", L"options.Release", L"events.Release", L"encryptor.Release",
                         L"factory.Release"};
    EXPECT_EQ(lastCalls(5), expected);
}
