#include "commands/testing_support.h"
#include "interfaces/vaultcore/exception.h"

#include <stdexcept>

using namespace Fakes;
using namespace JobRunner;

TEST_F(ASelfExtractingEncryption, whoseKeyFileDoesNotLoadTellsTheUserAndEnds)
{
    runWithKeyFile(L"C:\\none");
    const Calls expected{
        viewEvent(L"err_cannot_load_key_file"),
        L"messageBox Cannot load key file: No key file: C:\\none",
        L"factory.Release",
        WindowDestroyed,
        L"options.Release",
        L"events.Release",
        L"encryptor.Release",
        L"factory.Release",
    };
    EXPECT_EQ(behind(L"factory.LoadKeyFile(C:\\none)"), expected);
    const std::vector<ShownBox> boxes{{L"Cannot load key file: No key file: C:\\none", L"Cannot load key file", 0x40}};
    EXPECT_EQ(platform.messageBoxes.boxes(), boxes);
    EXPECT_EQ(views.factory.encryptionPasswords.size(), 1U);
}

TEST_F(ASelfExtractingEncryption, whoseKeyFileCannotEncryptTellsTheUserAndEnds)
{
    engine.keyFailure = L"Wrong kind of key.";
    runWithKeyFile(KeyFile);
    const Calls expected{
        L"key.Release",
        viewEvent(L"err_cannot_load_key_file"),
        L"messageBox Cannot load key file: Wrong kind of key.",
        L"factory.Release",
        WindowDestroyed,
        L"options.Release",
        L"events.Release",
        L"encryptor.Release",
        L"factory.Release",
    };
    EXPECT_EQ(behind(L"options.SetKey(C:\\k.zelkey)"), expected);
    EXPECT_EQ(engine.startedWith, nullptr);
}

TEST_F(ASelfExtractingEncryption, whoseKeyCannotTellItsTypeTellsTheUserAndEnds)
{
    engine.keyTypeFailure = L"No type.";
    runWithKeyFile(KeyFile);
    const Calls expected{
        L"key.Release",
        viewEvent(L"err_cannot_load_key_file"),
        L"messageBox Cannot load key file: No type.",
        L"factory.Release",
        WindowDestroyed,
        L"options.Release",
        L"events.Release",
        L"encryptor.Release",
        L"factory.Release",
    };
    EXPECT_EQ(behind(L"key.GetKeyType"), expected);
    EXPECT_EQ(engine.startedWith, nullptr);
}

TEST_F(ASelfExtractingEncryption, doesNotCatchTheFailureOfAPasswordKey)
{
    engine.keyFailure = L"No memory.";
    EXPECT_THROW(runWithPassword(), VaultCore::Exception);
    EXPECT_TRUE(platform.messageBoxes.boxes().empty());
    EXPECT_EQ(engine.liveObjects(), 0);
}

TEST_F(ASelfExtractingEncryption, releasesEverythingInOrderWhenAnExceptionLeavesTheRun)
{
    engine.onStart = [] { throw std::runtime_error("start"); };
    EXPECT_THROW(runWithPassword(), std::runtime_error);
    const Calls expected{L"encryptor.StartSfx", L"options.Release", L"events.Release",
                         L"encryptor.Release",  L"factory.Release", L"document.Release"};
    EXPECT_EQ(lastCalls(6), expected);
}
