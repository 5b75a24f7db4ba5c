#include "windows/framework/win32/key_file_dialog.h"

#include "fakes/fake_platform.h"
#include "windows/framework/win32/system_dialog.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <future>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <windows.h>

#include <objbase.h>

// The system's own dialogs, on a task's thread as in the program, with a user on the test's thread.

namespace JobRunner
{

namespace
{

using namespace std::chrono_literals;

constexpr auto Patience = 10s;
constexpr auto Interval = 20ms;

/// How often this thread is ready for COM; it is not any more behind this.
int takeComLevels()
{
    int levels = 0;
    while (CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED) == S_FALSE)
    {
        CoUninitialize();
        CoUninitialize();
        ++levels;
    }
    CoUninitialize();
    return levels;
}

/// What the dialog gave, and how often its thread was ready for COM behind it.
struct Picked
{
    std::wstring path;
    int comLevels;
};

Picked pick(bool initializeCom)
{
    std::wstring path = showKeyFileDialog(initializeCom);
    return {std::move(path), takeComLevels()};
}

/// A kind of the dialog and the side that asks for it.
struct Asked
{
    bool vista;
    bool initializeCom;
};

class KeyFileDialog : public testing::TestWithParam<Asked>
{
protected:
    KeyFileDialog()
    {
        platform_.shell.systemVersion = {2, GetParam().vista ? 6u : 5u};
        CoInitializeEx(nullptr, COINIT_MULTITHREADED); // as the first thread of the program
        GetCurrentDirectoryW(MAX_PATH, before_);
        wchar_t temporary[MAX_PATH] = {};
        GetTempPathW(MAX_PATH, temporary);
        folder_ = std::filesystem::path(temporary) / (L"keys of " + std::to_wstring(GetCurrentProcessId()));
        std::filesystem::create_directory(folder_);
        for (const wchar_t* const name : {L"my own.zelkey", L"other.key"})
            std::ofstream(folder_ / name) << "key";
    }
    ~KeyFileDialog() override
    {
        SetCurrentDirectoryW(before_); // the dialog has changed it, and what is in use cannot be removed
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
        CoUninitialize();
    }

    std::wstring path(const wchar_t* name) const { return (folder_ / name).wstring(); }

    /// Opens the dialog for a user who does this, which has to end it.
    Picked open(const std::function<void(const SystemDialog&)>& user)
    {
        std::future<Picked> task = std::async(std::launch::async, [] { return pick(GetParam().initializeCom); });
        SystemDialog dialog;
        const auto found = [&]
        {
            dialog = SystemDialog::find();
            return dialog.isUp();
        };
        EXPECT_TRUE(waitFor(found));
        if (dialog.isUp())
            user(dialog);
        const auto ended = [&task] { return task.wait_for(0s) == std::future_status::ready; };
        EXPECT_TRUE(waitFor(ended));
        while (!ended())
        {
            cancelAll(dialog.window);
            std::this_thread::sleep_for(Interval);
        }
        return task.get();
    }

    static bool waitFor(const std::function<bool()>& condition)
    {
        const auto end = std::chrono::steady_clock::now() + Patience;
        while (!condition())
        {
            if (std::chrono::steady_clock::now() > end)
                return false;
            std::this_thread::sleep_for(Interval);
        }
        return true;
    }

    /// The dialog and a message above it.
    static void cancelAll(HWND dialog)
    {
        for (const HWND window : {GetLastActivePopup(dialog), dialog})
            PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
    }

    Picked cancel()
    {
        return open([](const SystemDialog& dialog) { dialog.press(IDCANCEL); });
    }
    Picked typeAndOpen(const std::wstring& typed)
    {
        return open(
            [&](const SystemDialog& dialog)
            {
                dialog.type(typed);
                dialog.press(IDOK);
            });
    }

    Fakes::FakePlatform platform_;
    wchar_t before_[MAX_PATH] = {};
    std::filesystem::path folder_;
};

std::string nameOf(const testing::TestParamInfo<Asked>& asked)
{
    return std::string(asked.param.vista ? "Shell" : "Classic") +
           (asked.param.initializeCom ? "ToEncrypt" : "ToDecrypt");
}

INSTANTIATE_TEST_SUITE_P(OfTheSystem, KeyFileDialog,
                         testing::Values(Asked{true, true}, Asked{true, false}, Asked{false, true},
                                         Asked{false, false}),
                         nameOf);

/// Wine adds no extension in the classic dialog, Windows does.
class ShellKeyFileDialog : public KeyFileDialog
{
};

INSTANTIATE_TEST_SUITE_P(OfTheSystem, ShellKeyFileDialog, testing::Values(Asked{true, true}, Asked{true, false}),
                         nameOf);

} // namespace

TEST_P(KeyFileDialog, givesNothingWhenItIsCancelled)
{
    EXPECT_EQ(cancel().path, L"");
}

TEST_P(KeyFileDialog, givesThePathOfTheFileThatIsNamed)
{
    EXPECT_EQ(typeAndOpen(path(L"other.key")).path, path(L"other.key"));
}

TEST_P(KeyFileDialog, leavesComToTheEndOfItsThreadOnlyWhenAShellDialogIsCancelled)
{
    // The system's dialog may leave something of its own.
    const int byTheSystem = typeAndOpen(path(L"other.key")).comLevels;
    EXPECT_EQ(cancel().comLevels - byTheSystem, GetParam().vista && GetParam().initializeCom ? 1 : 0);
}

TEST_P(ShellKeyFileDialog, addsTheExtensionOfKeyFiles)
{
    EXPECT_EQ(typeAndOpen(path(L"my own")).path, path(L"my own.zelkey"));
}

TEST_P(KeyFileDialog, offersKeyFilesAndAll)
{
    const std::vector<std::wstring> wanted =
        GetParam().vista ? std::vector<std::wstring>{L"Zel Key files (*.zelkey)", L"All documents (*.*)"}
                         : std::vector<std::wstring>{L"Zel Key files", L"All Files"};
    std::vector<std::wstring> shown;
    bool readOnly = true;
    open(
        [&](const SystemDialog& dialog)
        {
            shown = dialog.fileTypes();
            readOnly = IsWindowVisible(dialog.item(SystemDialog::ReadOnlyBox)) != FALSE;
            dialog.press(IDCANCEL);
        });
    EXPECT_EQ(shown, wanted);
    EXPECT_FALSE(readOnly);
}

TEST_P(KeyFileDialog, staysUpForAFileThatDoesNotExist)
{
    const Picked picked = open(
        [this](const SystemDialog& dialog)
        {
            dialog.type(path(L"none.zelkey"));
            dialog.press(IDOK);
            // The system says so in a message above the dialog.
            HWND message = nullptr;
            waitFor(
                [&]
                {
                    const HWND above = GetLastActivePopup(dialog.window);
                    message = above != dialog.window ? above : nullptr;
                    return message || !IsWindow(dialog.window);
                });
            EXPECT_TRUE(message);
            PostMessageW(message, WM_COMMAND, IDOK, 0);
            dialog.press(IDCANCEL);
        });
    EXPECT_EQ(picked.path, L"");
}

} // namespace JobRunner
