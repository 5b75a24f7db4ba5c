#include "jobprocess/message_window.h"

#include "fakes/fake_platform.h"

#include <gtest/gtest.h>

#include <thread>

namespace JobRunner
{

namespace
{

/// Answers the dialogs from a script and notes the thread.
class ScriptedDialogs final : public IModalDialogs
{
public:
    bool showEncryptionPassword(EncryptionPasswordRequest& request) override
    {
        thread = Platform::platform().threads.currentThreadId();
        encryption = request;
        if (!confirm)
            return false;
        request = {L"secret", L"", 14, 1, L"riddle"};
        return true;
    }
    int showDecryptionPassword(DecryptionPasswordRequest& request) override
    {
        thread = Platform::platform().threads.currentThreadId();
        decryption = request;
        if (confirm)
        {
            request.passwordOut = L"secret";
            request.keyFileOut = L"k.zelkey";
        }
        return confirm ? 0 : 1;
    }
    int showFileError(const FileErrorRequest& request) override
    {
        thread = Platform::platform().threads.currentThreadId();
        error = request;
        return 1;
    }

    bool confirm = true;
    std::uint32_t thread = 0;
    EncryptionPasswordRequest encryption;
    DecryptionPasswordRequest decryption;
    FileErrorRequest error;
};

class BridgeTest : public testing::Test
{
protected:
    /// Makes the window on this thread, runs `work` on another, and pumps until the window is closed.
    template <class Work> void bridge(Work work)
    {
        ASSERT_TRUE(window_.create());
        std::thread other(
            [&]
            {
                work(window_);
                window_.close();
            });
        system_.messages.runLoop();
        other.join();
    }

    Fakes::FakePlatform system_;
    ScriptedDialogs dialogs_;
    MessageWindow window_{dialogs_};
    const std::uint32_t firstThread_ = system_.threads.currentThreadId();
};

TEST_F(BridgeTest, aCallFromAnotherThreadRunsOnTheFirstAndBringsItsAnswersBack)
{
    bridge(
        [&](MessageWindow& window)
        {
            EncryptionPasswordRequest request{L"", L"", 3, 2, L""};
            EXPECT_TRUE(window.showEncryptionPassword(request));
            EXPECT_EQ(request.password, L"secret");
            EXPECT_EQ(request.algorithm, 14u);
            EXPECT_EQ(request.destiny, 1u);
            EXPECT_EQ(request.riddle, L"riddle");
            DecryptionPasswordRequest decryption{L"f.zel", L"", L"", 1, nullptr, L"", L""};
            EXPECT_EQ(window.showDecryptionPassword(decryption), 0);
            EXPECT_EQ(decryption.keyFileOut, L"k.zelkey");
            FileErrorRequest error{L"t", L"h", L"s", L"z", L"m"};
            EXPECT_EQ(window.showFileError(error), 1);
        });
    EXPECT_EQ(dialogs_.thread, firstThread_);
    EXPECT_EQ(dialogs_.encryption.destiny, 2u);
    EXPECT_EQ(dialogs_.decryption.fileName, L"f.zel");
    EXPECT_EQ(dialogs_.error.target, L"z");
    EXPECT_EQ(system_.log.callsOf(L"send"),
              (std::vector<std::wstring>{L"send 2024", L"send 2025", L"send 2026", L"send 2023"}));
}

TEST_F(BridgeTest, aCallOnTheFirstThreadSendsNothing)
{
    ASSERT_TRUE(window_.create());
    EncryptionPasswordRequest request{L"", L"", 3, 2, L""};
    EXPECT_TRUE(window_.showEncryptionPassword(request));
    EXPECT_EQ(request.password, L"secret");
    FileErrorRequest error;
    EXPECT_EQ(window_.showFileError(error), 1);
    EXPECT_TRUE(system_.log.callsOf(L"send").empty());
}

TEST_F(BridgeTest, aCancelledPasswordLeavesTheRequestAsItWas)
{
    dialogs_.confirm = false;
    bridge(
        [&](MessageWindow& window)
        {
            EncryptionPasswordRequest request{L"", L"", 3, 2, L""};
            EXPECT_FALSE(window.showEncryptionPassword(request));
            EXPECT_TRUE(request.password.empty());
            EXPECT_EQ(request.algorithm, 3u);
            DecryptionPasswordRequest decryption{L"f", L"", L"", 0, nullptr, L"", L""};
            EXPECT_EQ(window.showDecryptionPassword(decryption), 1);
            EXPECT_TRUE(decryption.passwordOut.empty());
        });
}

TEST_F(BridgeTest, aWindowThatCannotBeMadeUnregistersItsClass)
{
    system_.messages.failCreateWindow = true;
    EXPECT_FALSE(window_.create());
    EXPECT_EQ(system_.log.callsOf(L"unregisterClass").size(), 1u);
}

TEST_F(BridgeTest, aClassThatCannotBeRegisteredMakesNoWindow)
{
    system_.messages.failRegisterClass = true;
    EXPECT_FALSE(window_.create());
    EXPECT_TRUE(system_.log.callsOf(L"createWindow").empty());
}

TEST_F(BridgeTest, withoutAWindowACallFromAnotherThreadAnswersNothingAtOnce)
{
    FileErrorRequest error;
    EXPECT_EQ(window_.showFileError(error), 0);
    EXPECT_EQ(dialogs_.thread, 0u);
}

} // namespace

} // namespace JobRunner
