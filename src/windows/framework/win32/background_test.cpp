#include "windows/framework/win32/background.h"

#include "windows/drawing/gdi_handles.h"

#include <gtest/gtest.h>

namespace JobRunner
{

namespace
{

constexpr COLORREF White = RGB(255, 255, 255);
constexpr int Width = 120;
constexpr int Height = 80;

class PlainControl : public ICustomControl
{
public:
    virtual ~PlainControl() = default;
    void setWidth(int, bool) override {}
    void fitToContent() override {}
    void setHeight(int) override {}
    void move(int, int) override {}
    void getRect(ControlRect*) override {}
    void notCalled1() override {}
    void notCalled2() override {}
    int heightForWidth(int) override { return 0; }
    void* getWindowHandle() override { return nullptr; }
    void destroy() override {}
    int getControlId() override { return 0; }
    void notCalled3() override {}
    void notCalled4() override {}
    void notCalled5() override {}
};

/// Looks at the buffer that it is given.
class TextLikeControl final : public PlainControl, public IControlBackground
{
public:
    void setBackground(void* parentWindow, void* deviceContext) override
    {
        ++calls;
        parent = static_cast<HWND>(parentWindow);
        const auto dc = static_cast<HDC>(deviceContext);
        first = GetPixel(dc, 0, 0);
        last = GetPixel(dc, Width - 1, Height - 1);
        beyond = GetPixel(dc, Width, Height);
    }

    int calls = 0;
    HWND parent = nullptr;
    COLORREF first = 0;
    COLORREF last = 0;
    COLORREF beyond = 0;
};

class Background : public testing::Test
{
protected:
    Background()
    {
        dialog_ = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, Width, Height, nullptr, nullptr, nullptr, nullptr);
        CreateWindowExW(0, L"BUTTON", L"", WS_CHILD, 10, 60, 30, 12, dialog_,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(1)), nullptr, nullptr);
        const Drawing::WindowDc screen(nullptr);
        picture_.create(screen.get(), Width, Height);
    }
    ~Background() override { DestroyWindow(dialog_); }

    HWND dialog_ = nullptr;
    Drawing::MemoryBuffer picture_;
    DialogBackground background_;
};

} // namespace

TEST_F(Background, handsAWhiteBufferOfTheDialogsSizeToEachText)
{
    TextLikeControl one;
    TextLikeControl two;
    background_.prepare(dialog_);
    background_.paint(dialog_, picture_.dc(), {&one, &two});
    for (const TextLikeControl* const text : {&one, &two})
    {
        EXPECT_EQ(text->calls, 1);
        EXPECT_EQ(text->parent, dialog_);
        EXPECT_EQ(text->first, White);
        EXPECT_EQ(text->last, White);
        EXPECT_EQ(text->beyond, CLR_INVALID);
    }
}

TEST_F(Background, makesTheBufferAnewInTheDialogsNewSize)
{
    SetWindowPos(dialog_, nullptr, 0, 0, Width / 2, Height / 2, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    background_.prepare(dialog_);
    SetWindowPos(dialog_, nullptr, 0, 0, Width, Height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    background_.prepare(dialog_);
    TextLikeControl text;
    background_.paint(dialog_, picture_.dc(), {&text});
    EXPECT_EQ(text.last, White);
}

TEST_F(Background, passesOverControlsThatTakeNone)
{
    PlainControl header;
    TextLikeControl text;
    background_.prepare(dialog_);
    background_.paint(dialog_, picture_.dc(), {&header, nullptr, &text});
    EXPECT_EQ(text.calls, 1);
}

TEST_F(Background, drawsItsLineHalfAButtonAboveTheFirstButton)
{
    background_.paint(dialog_, picture_.dc(), {});
    EXPECT_EQ(GetPixel(picture_.dc(), 0, 53), White);
    for (const int x : {0, Width - 1})
        EXPECT_EQ(GetPixel(picture_.dc(), x, 60 - 12 / 2), RGB(183, 231, 252));
    EXPECT_EQ(GetPixel(picture_.dc(), 0, 55), RGB(240, 240, 240));
    EXPECT_EQ(GetPixel(picture_.dc(), Width - 1, Height - 1), RGB(240, 240, 240));
}

} // namespace JobRunner
