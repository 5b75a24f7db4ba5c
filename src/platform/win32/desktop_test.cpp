#include "platform/desktop.h"

#include "platform/each_system.h"
#include "platform/threads.h"

#include <windows.h>

#include <vector>

namespace
{

/// Windows of this thread, real ones or the fake's.
class DesktopWindows : public EachSystem
{
protected:
    void TearDown() override
    {
        for (const Platform::WindowHandle window : opened_)
            close(window);
    }

    Platform::Desktop& desktop() { return system().desktop; }

    Platform::WindowHandle open(bool visible)
    {
        opened_.push_back(isNative() ? openReal(visible) : openFake(visible));
        return opened_.back();
    }

    void close(Platform::WindowHandle window)
    {
        if (isNative())
            DestroyWindow(static_cast<HWND>(window));
        else
            fake().desktop.windows.erase(window);
    }

    void show(Platform::WindowHandle window, bool visible)
    {
        if (isNative())
            ShowWindow(static_cast<HWND>(window), visible ? SW_SHOWNOACTIVATE : SW_HIDE);
        else
            fake().desktop.windows[window].visible = visible;
    }

    bool isEnumerated(Platform::WindowHandle wanted)
    {
        int found = 0;
        desktop().enumWindows(
            [&](Platform::WindowHandle window)
            {
                found += window == wanted;
                return true;
            });
        EXPECT_LE(found, 1);
        return found == 1;
    }

private:
    bool isNative() const { return GetParam() == Kind::Native; }

    static Platform::WindowHandle openReal(bool visible)
    {
        return CreateWindowExW(WS_EX_NOACTIVATE, L"STATIC", L"a window",
                               visible ? WS_OVERLAPPED | WS_VISIBLE : WS_OVERLAPPED, 0, 0, 50, 50, nullptr, nullptr,
                               nullptr, nullptr);
    }

    Platform::WindowHandle openFake(bool visible)
    {
        const auto window = Fakes::FakeDesktop::windowNumber(7 + opened_.size());
        fake().desktop.windows[window] = {system().threads.currentThreadId(), visible};
        return window;
    }

    std::vector<Platform::WindowHandle> opened_;
};

TEST_P(DesktopWindows, areEnumeratedWhetherTheyAreVisibleOrNot)
{
    const Platform::WindowHandle visible = open(true);
    const Platform::WindowHandle hidden = open(false);
    ASSERT_NE(visible, nullptr);
    EXPECT_TRUE(isEnumerated(visible));
    EXPECT_TRUE(isEnumerated(hidden));
    EXPECT_TRUE(desktop().isVisible(visible));
    EXPECT_FALSE(desktop().isVisible(hidden));
    EXPECT_TRUE(desktop().isWindow(hidden));
}

TEST_P(DesktopWindows, areThereUntilTheyClose)
{
    const Platform::WindowHandle window = open(true);
    EXPECT_TRUE(desktop().isWindow(window));
    show(window, false);
    EXPECT_TRUE(desktop().isWindow(window));
    EXPECT_FALSE(desktop().isVisible(window));
    show(window, true);
    EXPECT_TRUE(desktop().isVisible(window));
    close(window);
    EXPECT_FALSE(desktop().isWindow(window));
    EXPECT_FALSE(desktop().isVisible(window));
    EXPECT_FALSE(isEnumerated(window));
}

TEST_P(DesktopWindows, belongToTheThreadThatOpenedThem)
{
    EXPECT_EQ(desktop().windowThread(open(true)), system().threads.currentThreadId());
}

TEST_P(DesktopWindows, areNamedUntilTheReceiverHasEnough)
{
    open(true);
    open(true);
    int received = 0;
    desktop().enumWindows(
        [&](Platform::WindowHandle)
        {
            ++received;
            return false;
        });
    EXPECT_EQ(received, 1);
}

TEST_P(DesktopWindows, haveATextThatIsCutToTheRoomForIt)
{
    const Platform::WindowHandle window = open(true);
    EXPECT_EQ(desktop().windowText(window, 1024), L"a window");
    EXPECT_EQ(desktop().windowText(window, 9), L"a window");
    EXPECT_EQ(desktop().windowText(window, 8), L"a windo");
    EXPECT_EQ(desktop().windowText(window, 1), L"");
}

INSTANTIATE_EACH_SYSTEM(DesktopWindows);

} // namespace
