#include "panekit/density.h"

#include "panekit/icon_button.h"
#include "panekit/test_dialog.h"

#include <algorithm>

namespace Panekit
{

namespace
{

/// The same controls on screens of several densities.
class Density : public testing::TestWithParam<int>
{
protected:
    Density() { pretendDensity(GetParam()); }
    ~Density() override { pretendDensity(0); }

    static int scaled(int value) { return MulDiv(value, GetParam(), PlainDensity); }

    /// A control with the font that a dialog has at this density.
    template <class Interface> Interface* make(const wchar_t* classId)
    {
        auto* const control = static_cast<Interface*>(makeControl(classId, dialog_.window(), 0, 0, 100, 50));
        SendMessageW(windowOf(control), WM_SETFONT, reinterpret_cast<WPARAM>(font_.get()), FALSE);
        return control;
    }
    static HWND windowOf(ICustomControl* control) { return static_cast<HWND>(control->getWindowHandle()); }
    static SIZE sizeOf(ICustomControl* control)
    {
        ControlRect rect{};
        control->getRect(&rect);
        return {rect.right - rect.left, rect.bottom - rect.top};
    }
    static SIZE sizeOf(HWND window)
    {
        RECT rect{};
        GetWindowRect(window, &rect);
        return {rect.right - rect.left, rect.bottom - rect.top};
    }

    TestDialog dialog_;
    Drawing::GdiObject<HFONT> font_{
        CreateFontW(-scaled(11), 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, L"Tahoma")};
};

INSTANTIATE_TEST_SUITE_P(OfTheScreen, Density, testing::Values(96, 120, 144, 192));

} // namespace

TEST_P(Density, givesAFieldRoomForItsLineAndItsPicture)
{
    auto* const edit = make<IEditWithIconButtons>(ControlClass::EditWithIconButtons);
    edit->addIconButton(GetModuleHandleW(nullptr), L"SHOWPASS.PNG");
    edit->setWidth(scaled(200), true);
    edit->setText(L"Text");
    const HWND field = FindWindowExW(windowOf(edit), nullptr, L"EDIT", nullptr);
    const HWND button = FindWindowExW(windowOf(edit), nullptr, IconButton::ClassName, nullptr);
    EXPECT_GE(sizeOf(edit).cy, scaled(22));
    EXPECT_LE(sizeOf(edit).cy, scaled(28));
    EXPECT_GE(sizeOf(field).cy, scaled(11));
    EXPECT_LT(sizeOf(field).cy, sizeOf(edit).cy);
    EXPECT_GE(sizeOf(button).cx, scaled(16 + 4));
    EXPECT_GE(sizeOf(button).cy, scaled(16));
    EXPECT_GE(sizeOf(field).cx, scaled(150));
    edit->destroy();
}

TEST_P(Density, drawsThePictureOfAButtonInItsSize)
{
    auto* const edit = make<IEditWithIconButtons>(ControlClass::EditWithIconButtons);
    edit->addIconButton(GetModuleHandleW(nullptr), L"DOTS.PNG");
    const HWND button = FindWindowExW(windowOf(edit), nullptr, IconButton::ClassName, nullptr);
    const SIZE size = sizeOf(button);
    const Drawing::WindowDc screen(nullptr);
    Drawing::MemoryBuffer buffer;
    buffer.create(screen.get(), static_cast<int>(size.cx), static_cast<int>(size.cy));
    SendMessageW(button, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(buffer.dc()), PRF_CLIENT);
    RECT ink{size.cx, size.cy, 0, 0};
    for (int y = 0; y < buffer.height(); ++y)
        for (int x = 0; x < buffer.width(); ++x)
            if (GetPixel(buffer.dc(), x, y) != GetSysColor(COLOR_WINDOW))
                ink = {std::min<LONG>(ink.left, x), std::min<LONG>(ink.top, y), std::max<LONG>(ink.right, x + 1),
                       std::max<LONG>(ink.bottom, y + 1)};
    // The picture is 14 pixels wide at the plain density, with some of it empty.
    EXPECT_LE(ink.right - ink.left, scaled(14) + 1);
    EXPECT_GE(ink.right - ink.left, scaled(9));
    EXPECT_NEAR(ink.left + ink.right, size.cx, scaled(2));
    edit->destroy();
}

TEST_P(Density, givesAHeaderRoomForItsPicture)
{
    auto* const header = make<ICopyDialogGradient>(ControlClass::CopyDialogGradient);
    EXPECT_GE(header->heightForWidth(0), scaled(32 + 2 * 8)) << "with some space around it";
    EXPECT_LE(header->heightForWidth(0), scaled(64));
    header->destroy();
}

TEST_P(Density, givesAListItsLine)
{
    auto* const list = make<IComboBox>(ControlClass::ComboBox);
    list->addItem(L"BLOWFISH-448");
    list->fitToContent();
    EXPECT_GE(sizeOf(list).cy, scaled(13));
    EXPECT_LE(sizeOf(list).cy, scaled(30));
    EXPECT_GE(sizeOf(list).cx, scaled(80));
    list->destroy();
}

TEST_P(Density, alignsTheCaptionsWithTheChoice)
{
    auto* const choice = make<ITextWithPopupMenu>(ControlClass::TextWithPopupMenu);
    choice->addItem(L"Password", L"Password");
    choice->move(scaled(20), 0);
    choice->fitToContent();
    EXPECT_EQ(choice->getCaptionLeft(), scaled(20) + scaled(3));
    EXPECT_GE(sizeOf(choice).cx, scaled(50));
    auto* const caption = make<ITextWithLinks>(ControlClass::TextWithLinks);
    caption->setText(L"Repeat:");
    caption->fitToContent();
    EXPECT_EQ(sizeOf(choice).cy, sizeOf(caption).cy);
    caption->destroy();
    choice->destroy();
}

TEST_P(Density, givesATextTheHeightOfItsFont)
{
    auto* const links = make<ITextWithLinks>(ControlClass::TextWithLinks);
    auto* const text = make<ISimpleText>(ControlClass::SimpleText);
    links->setText(L"<a href=\"x\">Change</a>");
    text->setText(L"Change");
    EXPECT_GE(links->heightForWidth(0), scaled(11));
    EXPECT_LE(links->heightForWidth(0), scaled(18));
    EXPECT_EQ(text->heightForWidth(0), links->heightForWidth(0));
    links->destroy();
    text->destroy();
}

TEST(DensityOf, isThatOfTheScreenUnlessAnotherIsPretended)
{
    const Drawing::WindowDc screen(nullptr);
    const int real = GetDeviceCaps(screen.get(), LOGPIXELSX);
    EXPECT_EQ(densityOf(nullptr), real);
    pretendDensity(2 * real);
    EXPECT_EQ(densityOf(nullptr), 2 * real);
    pretendDensity(0);
    EXPECT_EQ(densityOf(nullptr), real);
}

} // namespace Panekit
