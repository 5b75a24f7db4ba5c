#include "jobprocess/message_window.h"
#include "platform/system_with.h"

#include "fakes/fake_platform.h"

#include <gtest/gtest.h>

#include <thread>

namespace JobRunner
{

namespace
{

using Calls = std::vector<std::wstring>;
using Platform::WindowHandle;

/// A window system that only writes down what it is asked and gives the answers of the test. Logs numbers in full.
class RecordingMessages final : public Platform::Messages
{
public:
    explicit RecordingMessages(Fakes::CallLog& log) : log_(log) {}

    static constexpr std::uintptr_t Window = 5;

    bool registerClass(const std::wstring& className) override
    {
        log_.add(L"registerClass " + className);
        return registers;
    }
    void unregisterClass(const std::wstring& className) override { log_.add(L"unregisterClass " + className); }
    WindowHandle createWindow(const std::wstring& className, const std::wstring& title,
                              Platform::WindowProcedure&) override
    {
        log_.add(L"createWindow " + className + L", " + title);
        return creates ? reinterpret_cast<WindowHandle>(Window) : nullptr;
    }
    void destroyWindow(WindowHandle window) override { log_.add(L"destroyWindow" + number(window)); }
    std::intptr_t defaultProcedure(WindowHandle window, std::uint32_t message, std::uintptr_t wParam,
                                   std::intptr_t lParam) override
    {
        log_.add(L"default" + all(window, message, wParam, lParam));
        return 77;
    }
    std::intptr_t send(WindowHandle window, std::uint32_t message, std::uintptr_t wParam, std::intptr_t lParam) override
    {
        log_.add(L"send" + all(window, message, wParam, lParam));
        return answer;
    }
    void postQuit() override { log_.add(L"postQuit"); }
    bool dispatchOne() override { return false; }
    void runLoop() override {}

    bool registers = true;
    bool creates = true;
    std::intptr_t answer = 0;

private:
    static std::wstring number(WindowHandle window)
    {
        return L' ' + std::to_wstring(reinterpret_cast<std::uintptr_t>(window));
    }
    static std::wstring all(WindowHandle window, std::uint32_t message, std::uintptr_t wParam, std::intptr_t lParam)
    {
        return number(window) + L' ' + std::to_wstring(message) + L' ' + std::to_wstring(wParam) + L' ' +
               std::to_wstring(lParam);
    }

    Fakes::CallLog& log_;
};

/// Answers at once, with what the test says.
class ReadyDialogs final : public IModalDialogs
{
public:
    bool showEncryptionPassword(EncryptionPasswordRequest&) override { return answer != 0; }
    int showDecryptionPassword(DecryptionPasswordRequest&) override { return answer; }
    int showFileError(const FileErrorRequest&) override { return answer; }

    int answer = 0;
};

class MessageWindowTest : public testing::Test
{
protected:
    MessageWindowTest() { Platform::setPlatform(&observed_); }

    template <class Work> void onAnotherThread(Work work) { std::thread(work).join(); }
    void create()
    {
        ASSERT_TRUE(window_.create());
        log_.clear();
    }
    std::intptr_t receive(std::uint32_t message, void* request = nullptr)
    {
        return window_.onMessage(handle_, message, reinterpret_cast<std::uintptr_t>(request),
                                 reinterpret_cast<std::intptr_t>(request));
    }

    Fakes::FakePlatform system_;
    Fakes::CallLog log_;
    RecordingMessages messages_{log_};
    Platform::System observed_ = Platform::systemWith(system_.system(), messages_);
    ReadyDialogs dialogs_;
    MessageWindow window_{dialogs_};
    const WindowHandle handle_ = reinterpret_cast<WindowHandle>(RecordingMessages::Window);
};

TEST_F(MessageWindowTest, isMadeUnderItsNamesAndItsClassStaysRegistered)
{
    EXPECT_TRUE(window_.create());
    window_.close();
    receive(Platform::WindowDestroyed);
    EXPECT_EQ(log_.calls(), (Calls{L"registerClass JobRunner_MessageWindow",
                                   L"createWindow JobRunner_MessageWindow, JobRunner MessageWindow", L"send 5 2023 0 0",
                                   L"postQuit"}));
}

TEST_F(MessageWindowTest, withoutItsClassUnregistersNothing)
{
    messages_.registers = false;
    EXPECT_FALSE(window_.create());
    EXPECT_EQ(log_.calls(), (Calls{L"registerClass JobRunner_MessageWindow"}));
}

TEST_F(MessageWindowTest, thatCouldNotBeMadeHasNoFirstThread)
{
    messages_.creates = false;
    dialogs_.answer = 1;
    EXPECT_FALSE(window_.create());
    EXPECT_EQ(log_.calls().back(), L"unregisterClass JobRunner_MessageWindow");
    FileErrorRequest request;
    EXPECT_EQ(window_.showFileError(request), 0);
    EXPECT_TRUE(log_.calls().back().starts_with(L"send 0 2026 "));
}

TEST_F(MessageWindowTest, sendsTheAddressOfARequestTwice)
{
    create();
    EncryptionPasswordRequest encryption;
    DecryptionPasswordRequest decryption;
    FileErrorRequest error;
    onAnotherThread(
        [&]
        {
            window_.showEncryptionPassword(encryption);
            window_.showDecryptionPassword(decryption);
            window_.showFileError(error);
        });
    const auto sent = [](std::uint32_t message, const void* request)
    {
        const std::wstring address = L' ' + std::to_wstring(reinterpret_cast<std::uintptr_t>(request));
        const std::wstring asSigned = L' ' + std::to_wstring(reinterpret_cast<std::intptr_t>(request));
        return L"send 5 " + std::to_wstring(message) + address + asSigned;
    };
    EXPECT_EQ(log_.calls(), (Calls{sent(2024, &encryption), sent(2025, &decryption), sent(2026, &error)}));
}

TEST_F(MessageWindowTest, takesAnEncryptionAsConfirmedAtAResultOfOneAlone)
{
    create();
    for (const std::intptr_t result : {-1, 0, 1, 2})
    {
        messages_.answer = result;
        onAnotherThread(
            [&]
            {
                EncryptionPasswordRequest request;
                EXPECT_EQ(window_.showEncryptionPassword(request), result == 1) << result;
            });
    }
}

TEST_F(MessageWindowTest, givesTheOtherResultsAsTheyStand)
{
    create();
    for (const int result : {-1, 0, 1, 2, 3, 9})
    {
        messages_.answer = result;
        onAnotherThread(
            [&]
            {
                DecryptionPasswordRequest decryption;
                FileErrorRequest error;
                EXPECT_EQ(window_.showDecryptionPassword(decryption), result);
                EXPECT_EQ(window_.showFileError(error), result);
            });
    }
}

TEST_F(MessageWindowTest, sendsNothingFromItsOwnThreadButTheClose)
{
    create();
    dialogs_.answer = 2;
    EncryptionPasswordRequest encryption;
    DecryptionPasswordRequest decryption;
    FileErrorRequest error;
    EXPECT_TRUE(window_.showEncryptionPassword(encryption));
    EXPECT_EQ(window_.showDecryptionPassword(decryption), 2);
    EXPECT_EQ(window_.showFileError(error), 2);
    EXPECT_TRUE(log_.calls().empty());
    window_.close();
    EXPECT_EQ(log_.calls(), (Calls{L"send 5 2023 0 0"}));
}

TEST_F(MessageWindowTest, answersTheDialogMessagesWithTheDialogsAnswers)
{
    create();
    dialogs_.answer = 2;
    EncryptionPasswordRequest encryption;
    DecryptionPasswordRequest decryption;
    FileErrorRequest error;
    EXPECT_EQ(receive(WM_JOB_ENCRYPTION_PASSWORD, &encryption), 1);
    EXPECT_EQ(receive(WM_JOB_DECRYPTION_PASSWORD, &decryption), 2);
    EXPECT_EQ(receive(WM_JOB_FILE_ERROR, &error), 2);
    dialogs_.answer = 0;
    EXPECT_EQ(receive(WM_JOB_ENCRYPTION_PASSWORD, &encryption), 0);
    EXPECT_TRUE(log_.calls().empty());
}

TEST_F(MessageWindowTest, isDestroyedByTheCloseAndLeavesTheAnswerToTheSystem)
{
    create();
    EXPECT_EQ(receive(WM_JOB_CLOSE), 77);
    EXPECT_EQ(log_.calls(), (Calls{L"destroyWindow 5", L"default 5 2023 0 0"}));
    // Its own window is the one that ends, whichever the message names.
    log_.clear();
    window_.onMessage(nullptr, WM_JOB_CLOSE, 0, 0);
    EXPECT_EQ(log_.calls().front(), L"destroyWindow 5");
}

TEST_F(MessageWindowTest, endsTheLoopWhenItIsDestroyedAndAnswersZero)
{
    create();
    EXPECT_EQ(receive(2), 0);
    EXPECT_EQ(log_.calls(), (Calls{L"postQuit"}));
}

TEST_F(MessageWindowTest, leavesEveryOtherMessageToTheSystem)
{
    create();
    for (const std::uint32_t message : {0U, 15U, 16U, 1024U, 2022U, 2027U})
    {
        log_.clear();
        EXPECT_EQ(window_.onMessage(handle_, message, 3, 4), 77);
        EXPECT_EQ(log_.calls(), (Calls{L"default 5 " + std::to_wstring(message) + L" 3 4"}));
    }
}

} // namespace

} // namespace JobRunner
