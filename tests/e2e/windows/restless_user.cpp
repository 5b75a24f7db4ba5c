#include "restless_user.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <iterator>
#include <thread>

namespace EndToEnd
{

namespace
{

constexpr int PauseButton = 1090;
constexpr int CancelButton = 1226;
constexpr UINT AnswerLimit = 5000;

const char* valueOf(const char* variable)
{
    const char* const value = std::getenv(variable);
    return value != nullptr && *value != '\0' ? value : nullptr;
}

} // namespace

std::chrono::seconds soakDuration(int usualSeconds)
{
    const char* const seconds = valueOf("JOBRUNNER_CONCURRENCY_SECONDS");
    return std::chrono::seconds(seconds != nullptr ? std::atoi(seconds) : usualSeconds);
}

unsigned firstSoakSeed()
{
    const char* const seed = valueOf("JOBRUNNER_SOAK_SEED");
    return seed != nullptr ? static_cast<unsigned>(std::strtoul(seed, nullptr, 10)) : std::random_device{}();
}

void RestlessUser::actOnce()
{
    ++actions_;
    switch (below(8))
    {
    case 0:
    case 1:
        return pressPause();
    case 2:
        PostMessageW(progress_.handle(), WM_SYSCOMMAND, SC_MINIMIZE, 0);
        return expect([this] { return IsIconic(progress_.handle()) != FALSE; });
    case 3:
        ShowWindowAsync(progress_.handle(), SW_HIDE);
        return expect([this] { return !progress_.isVisible(); });
    case 4:
        return bringBack();
    case 5: // neither does anything
        progress_.close();
        PostMessageW(progress_.handle(), WM_COMMAND, IDCANCEL, 0);
        return;
    case 6:
        return pressKey();
    default:
        std::this_thread::sleep_for(milliseconds(below(300)));
    }
}

void RestlessUser::expect(const std::function<bool()>& effect)
{
    EXPECT_TRUE(waitUntil([&] { return effect() || !progress_.exists() || interrupted_(); }));
}

bool RestlessUser::isAnswered() const
{
    DWORD_PTR ignored = 0;
    return SendMessageTimeoutW(progress_.handle(), WM_NULL, 0, 0, SMTO_NORMAL, AnswerLimit, &ignored) != 0 ||
           !progress_.exists();
}

void RestlessUser::bringBack()
{
    ShowWindowAsync(progress_.handle(), SW_RESTORE);
    expect([this] { return progress_.isVisible() && IsIconic(progress_.handle()) == FALSE; });
}

void RestlessUser::pressPause()
{
    bringBack();
    const std::wstring before = progress_.text(PauseButton);
    progress_.clickWithMouse(PauseButton);
    expect([&] { return progress_.text(PauseButton) != before; });
    expect([&] { return progress_.isEnabled(CancelButton) == (before == L"Resume"); });
    ++clicks_;
}

/// Keys that press no button.
void RestlessUser::pressKey()
{
    constexpr WORD Keys[] = {VK_ESCAPE, VK_TAB, VK_UP, VK_F1};
    bringBack();
    progress_.press(Keys[below(std::size(Keys))]);
}

void RestlessUser::resumeIfPaused()
{
    if (progress_.text(PauseButton) == L"Resume")
        pressPause();
}

bool RestlessUser::cancel()
{
    resumeIfPaused();
    bringBack();
    if (!progress_.exists())
        return false;
    progress_.clickWithMouse(CancelButton);
    ++clicks_;
    return true;
}

} // namespace EndToEnd
