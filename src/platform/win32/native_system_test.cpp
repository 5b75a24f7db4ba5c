#include "platform/message_box.h"
#include "platform/messages.h"
#include "platform/modules.h"
#include "platform/platform.h"
#include "platform/shell.h"
#include "platform/threads.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace Platform
{

namespace
{

constexpr std::uint32_t Question = 2023;
constexpr std::uint32_t Close = 2024;

class Answering : public WindowProcedure
{
public:
    std::intptr_t onMessage(WindowHandle window, std::uint32_t message, std::uintptr_t wParam,
                            std::intptr_t lParam) override
    {
        Messages& messages = nativeSystem().messages;
        if (message == Question)
        {
            thread = GetCurrentThreadId();
            return static_cast<std::intptr_t>(wParam) + lParam;
        }
        if (message == Close)
            messages.destroyWindow(window);
        if (message == WindowDestroyed)
        {
            messages.postQuit();
            return 0;
        }
        return messages.defaultProcedure(window, message, wParam, lParam);
    }

    DWORD thread = 0;
};

class NativeWindow : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(messages_.registerClass(L"NativeSystemTest"));
        window_ = messages_.createWindow(L"NativeSystemTest", L"A title", procedure_);
        ASSERT_NE(window_, nullptr);
    }

    void TearDown() override
    {
        DestroyWindow(static_cast<HWND>(window_));
        messages_.unregisterClass(L"NativeSystemTest");
        MSG message{};
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) // the quit message
            continue;
    }

    Messages& messages_ = nativeSystem().messages;
    Answering procedure_;
    WindowHandle window_ = nullptr;
};

std::wstring systemModule()
{
    Modules& modules = nativeSystem().modules;
    return modules.fileName(GetModuleHandleW(L"kernel32.dll"));
}

} // namespace

TEST_F(NativeWindow, isHiddenAndKeepsNoTitle)
{
    const HWND window = static_cast<HWND>(window_);
    wchar_t title[32] = {};
    GetWindowTextW(window, title, 32);
    EXPECT_STREQ(title, L"");
    EXPECT_FALSE(IsWindowVisible(window));
    EXPECT_EQ(GetClassLongW(window, GCL_HBRBACKGROUND), 6u);
}

TEST_F(NativeWindow, hasTheFrameOfAnOverlappedWindowAndNothingThatIsOnlyForTheEye)
{
    const HWND window = static_cast<HWND>(window_);
    EXPECT_EQ(GetWindowLongW(window, GWL_STYLE) & WS_OVERLAPPEDWINDOW, WS_OVERLAPPEDWINDOW);
    EXPECT_EQ(GetParent(window), nullptr);
    EXPECT_EQ(GetMenu(window), nullptr);
    EXPECT_EQ(GetClassLongW(window, GCL_STYLE), 0u);
    EXPECT_EQ(GetClassLongW(window, GCL_CBWNDEXTRA), 0u);
    EXPECT_EQ(GetClassLongW(window, GCL_HICON), 0u);
    EXPECT_EQ(GetClassLongW(window, GCL_HICONSM), 0u);
    EXPECT_EQ(GetClassLongW(window, GCL_HCURSOR), 0u);
}

TEST_F(NativeWindow, answersItsOwnThreadAtOnce)
{
    EXPECT_EQ(messages_.send(window_, Question, 40, 2), 42);
    EXPECT_EQ(procedure_.thread, GetCurrentThreadId());
}

TEST_F(NativeWindow, answersAnotherThreadOnItsOwnThread)
{
    std::intptr_t answer = 0;
    const auto thread = nativeSystem().threads.start(
        [&]
        {
            answer = messages_.send(window_, Question, 40, 2);
            messages_.send(window_, Close, 0, 0);
        });
    messages_.runLoop();
    thread->wait();
    EXPECT_EQ(answer, 42);
    EXPECT_EQ(procedure_.thread, GetCurrentThreadId());
    EXPECT_FALSE(IsWindow(static_cast<HWND>(window_)));
}

TEST(NativeMessages, aNullWindowAnswers0)
{
    EXPECT_EQ(nativeSystem().messages.send(nullptr, Question, 40, 2), 0);
}

TEST(NativeMessages, aClassIsRegisteredOnce)
{
    Messages& messages = nativeSystem().messages;
    EXPECT_TRUE(messages.registerClass(L"NativeSystemTestTwice"));
    EXPECT_FALSE(messages.registerClass(L"NativeSystemTestTwice"));
    messages.unregisterClass(L"NativeSystemTestTwice");
    EXPECT_TRUE(messages.registerClass(L"NativeSystemTestTwice"));
    messages.unregisterClass(L"NativeSystemTestTwice");
}

TEST(NativeMessages, aWindowOfAnUnknownClassIsNull)
{
    Answering procedure;
    EXPECT_EQ(nativeSystem().messages.createWindow(L"NativeSystemTestNone", L"", procedure), nullptr);
}

TEST(NativeModules, loadAModuleByItsFullPath)
{
    Modules& modules = nativeSystem().modules;
    const ModuleHandle module = modules.load(systemModule());
    ASSERT_NE(module, nullptr);
    EXPECT_NE(modules.findExport(module, "GetVersion"), nullptr);
    EXPECT_EQ(modules.findExport(module, "NoSuchExport"), nullptr);
    modules.unload(module);
}

TEST(NativeModules, doNotLoadAModuleByABareName)
{
    Modules& modules = nativeSystem().modules;
    EXPECT_EQ(modules.load(L"version.dll"), nullptr);
    EXPECT_EQ(modules.load(L"\\version.dll"), nullptr);
    EXPECT_EQ(modules.load(L"C:version.dll"), nullptr);
}

TEST(NativeModules, nameTheProgramForNull)
{
    const std::wstring name = nativeSystem().modules.fileName(nullptr);
    EXPECT_TRUE(name.ends_with(L".exe")) << testing::PrintToString(name);
    EXPECT_EQ(nativeSystem().modules.moduleFileName(L"vaultcore"), L"vaultcore.dll");
}

TEST(NativeThreads, anEventStaysSetUntilItIsReset)
{
    Threads& threads = nativeSystem().threads;
    const auto event = threads.createEvent();
    std::uint32_t id = 0;
    const auto thread = threads.start(
        [&]
        {
            id = threads.currentThreadId();
            event->set();
        });
    event->wait();
    event->wait();
    thread->wait();
    EXPECT_NE(id, 0u);
    EXPECT_NE(id, threads.currentThreadId());
}

TEST(NativeShell, knowsTheProgramAndTheFolder)
{
    Shell& shell = nativeSystem().shell;
    ASSERT_FALSE(shell.commandLineArguments().empty());
    EXPECT_NE(shell.currentDirectory(), L"");
    EXPECT_EQ(shell.version().platformId, 2u);
    EXPECT_GE(shell.version().major, 6u);
}

TEST(NativeShell, combinesAndShortensPaths)
{
    Shell& shell = nativeSystem().shell;
    EXPECT_EQ(shell.combinePath(L"C:\\a\\b\\", L"..\\.\\c\\"), L"C:\\a\\c\\");
    EXPECT_EQ(shell.compactPath(L"short.txt", 51), L"short.txt");
    EXPECT_EQ(shell.compactPath(L"C:\\a long folder\\and another\\name.txt", 21).size(), 20u);
}

TEST(NativeShell, deletesAFile)
{
    wchar_t folder[MAX_PATH + 1] = {};
    wchar_t path[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, folder);
    ASSERT_NE(GetTempFileNameW(folder, L"job", 0, path), 0u);
    EXPECT_TRUE(nativeSystem().shell.deleteFile(path));
    EXPECT_FALSE(nativeSystem().shell.deleteFile(path));
}

} // namespace Platform
