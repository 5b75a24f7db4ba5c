#include "windows/framework/win32/dialog.h"

#include <gtest/gtest.h>

namespace JobRunner
{

namespace
{

class CentreDialog : public testing::Test
{
protected:
    CentreDialog() { SystemParametersInfoW(SPI_GETWORKAREA, 0, &area_, 0); }
    ~CentreDialog() override
    {
        DestroyWindow(dialog_);
        if (owner_)
            DestroyWindow(owner_);
    }

    void makeOwner(int x, int y, int width, int height, DWORD style = WS_VISIBLE)
    {
        owner_ = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | style, x, y, width, height, nullptr, nullptr, nullptr,
                                 nullptr);
    }
    /// Where a dialog of this size comes to stand.
    RECT centred(int width, int height)
    {
        dialog_ = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 3, 4, width, height, owner_, nullptr, nullptr, nullptr);
        centreDialog(dialog_);
        RECT place{};
        GetWindowRect(dialog_, &place);
        EXPECT_EQ(place.right - place.left, width);
        EXPECT_EQ(place.bottom - place.top, height);
        return place;
    }
    void expectOnTheWorkArea(const RECT& place) const
    {
        EXPECT_EQ(place.left - area_.left, area_.right - place.right);
        EXPECT_EQ(place.top - area_.top, area_.bottom - place.bottom);
    }

    RECT area_{};
    HWND owner_ = nullptr;
    HWND dialog_ = nullptr;
};

} // namespace

TEST_F(CentreDialog, putsItOnTheWorkAreaWithoutAnOwner)
{
    expectOnTheWorkArea(centred(200, 100));
}

TEST_F(CentreDialog, putsItOnAnOwnerThatCanBeSeen)
{
    makeOwner(100, 80, 400, 300);
    const RECT place = centred(200, 100);
    EXPECT_EQ(place.left, 200);
    EXPECT_EQ(place.top, 180);
}

TEST_F(CentreDialog, passesOverAHiddenOwner)
{
    makeOwner(100, 80, 400, 300, 0);
    expectOnTheWorkArea(centred(200, 100));
}

TEST_F(CentreDialog, keepsItInsideTheWorkArea)
{
    makeOwner(static_cast<int>(area_.right) - 50, static_cast<int>(area_.bottom) - 50, 100, 100);
    const RECT place = centred(200, 150);
    EXPECT_EQ(place.right, area_.right);
    EXPECT_EQ(place.bottom, area_.bottom);
}

TEST_F(CentreDialog, keepsItsTopLeftInSight)
{
    makeOwner(static_cast<int>(area_.left) - 20, static_cast<int>(area_.top) - 20, 60, 60);
    const RECT place = centred(200, 150);
    EXPECT_EQ(place.left, area_.left);
    EXPECT_EQ(place.top, area_.top);
}

} // namespace JobRunner
