#include "panekit/test_dialog.h"

#include <vector>

#include <commctrl.h>

namespace Panekit
{

namespace
{

constexpr COLORREF White = RGB(255, 255, 255);

class SimpleTextTest : public ControlTest<ISimpleText>
{
protected:
    SimpleTextTest() : ControlTest(ControlClass::SimpleText) {}

    void setBackground(COLORREF colour)
    {
        RECT client{};
        GetClientRect(dialog_.window(), &client);
        const Drawing::WindowDc dc(dialog_.window());
        Drawing::MemoryBuffer behind;
        behind.create(dc.get(), client.right, client.bottom);
        Drawing::fillSolid(behind.dc(), client, White);
        Drawing::fillSolid(behind.dc(), RECT{50, 60, client.right, client.bottom}, colour);
        dynamic_cast<IControlBackground*>(base_)->setBackground(dialog_.window(), behind.dc());
    }

    std::vector<COLORREF> picture()
    {
        Drawing::MemoryBuffer buffer;
        paintInto(buffer);
        std::vector<COLORREF> pixels;
        for (int y = 0; y < buffer.height(); ++y)
            for (int x = 0; x < buffer.width(); ++x)
                pixels.push_back(GetPixel(buffer.dc(), x, y));
        return pixels;
    }

    /// What the control answers when its tooltip asks for a text.
    std::wstring tip()
    {
        NMTTDISPINFOW question{};
        question.hdr.hwndFrom = tooltip();
        question.hdr.code = static_cast<UINT>(TTN_GETDISPINFOW);
        question.lpszText = question.szText;
        SendMessageW(window(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&question));
        return question.lpszText;
    }

    static HWND tooltip()
    {
        HWND found = nullptr;
        EnumThreadWindows(GetCurrentThreadId(), keepTooltip, reinterpret_cast<LPARAM>(&found));
        return found;
    }

private:
    static BOOL CALLBACK keepTooltip(HWND window, LPARAM found)
    {
        wchar_t name[40] = {};
        GetClassNameW(window, name, 40);
        if (std::wstring(name) == TOOLTIPS_CLASSW)
            *reinterpret_cast<HWND*>(found) = window;
        return TRUE;
    }
};

std::wstring longPath(const wchar_t* name = L"report.docx")
{
    std::wstring path = L"C:";
    while (path.size() < 300)
        path += L"\\a folder with a name";
    return path + L'\\' + name;
}

} // namespace

TEST_F(SimpleTextTest, fitsToItsText)
{
    control_->setText(L"Source:");
    control_->fitToContent();
    const int narrow = width();
    const int line = height();
    control_->setText(L"Source: and more");
    control_->fitToContent();
    EXPECT_GT(width(), narrow);
    EXPECT_EQ(height(), line);
}

TEST_F(SimpleTextTest, hasTheHeightOfOneLineWhenItIsEmpty)
{
    control_->setText(L"x");
    const int line = heightOfOneLine();
    control_->setText(L"");
    EXPECT_EQ(control_->heightForWidth(100), line);
    EXPECT_EQ(control_->heightForWidth(0), line);
}

TEST_F(SimpleTextTest, wrapsAndGrowsWithItsWidth)
{
    control_->setText(L"The file is in use by another program and cannot be opened at the moment.");
    const int line = heightOfOneLine();
    EXPECT_GT(control_->heightForWidth(120), line);
    control_->setWidth(120, true);
    EXPECT_EQ(width(), 120);
    EXPECT_EQ(height(), control_->heightForWidth(120));
    EXPECT_EQ(control_->heightForWidth(2000), line);
}

TEST_F(SimpleTextTest, wrapsWithinALongWord)
{
    control_->setText(std::wstring(300, L'x').c_str());
    const int line = heightOfOneLine();
    EXPECT_GT(control_->heightForWidth(200), 3 * line);
}

TEST_F(SimpleTextTest, keepsAPathOnOneLine)
{
    control_->setText(longPath().c_str());
    const int line = control_->heightForWidth(0);
    EXPECT_GT(control_->heightForWidth(200), line);
    control_->setPathStyle();
    EXPECT_EQ(control_->heightForWidth(200), line);
}

TEST_F(SimpleTextTest, showsAShortenedPathButTellsAllOfIt)
{
    control_->setText(longPath().c_str());
    control_->setPathStyle();
    control_->setWidth(200, true);
    EXPECT_GT(paintedUnlike(White), 0);
    EXPECT_EQ(windowText(), longPath());
    // The name at its end is in sight.
    const auto report = picture();
    control_->setText(longPath(L"letter.docx").c_str());
    EXPECT_NE(picture(), report);
}

TEST_F(SimpleTextTest, tellsAllOfAShortenedPathInATip)
{
    control_->setText(longPath().c_str());
    EXPECT_FALSE(tooltip());
    control_->setPathStyle();
    ASSERT_TRUE(tooltip());
    control_->setWidth(200, true);
    EXPECT_EQ(tip(), longPath());
    control_->setText(L"C:\\a.txt");
    EXPECT_EQ(tip(), L"");
}

TEST_F(SimpleTextTest, showsAnAmpersandAsItIs)
{
    control_->setText(L"a b");
    control_->fitToContent();
    const int without = width();
    control_->setText(L"a&b");
    control_->fitToContent();
    EXPECT_GE(width(), without);
    EXPECT_EQ(windowText(), L"a&b");
}

TEST_F(SimpleTextTest, drawsACaptionInAnotherColour)
{
    control_->setText(L"Source:");
    control_->fitToContent();
    Drawing::MemoryBuffer plain;
    paintInto(plain);
    control_->setCaptionStyle(true);
    Drawing::MemoryBuffer caption;
    paintInto(caption);
    int different = 0;
    for (int y = 0; y < plain.height(); ++y)
        for (int x = 0; x < plain.width(); ++x)
            different += GetPixel(plain.dc(), x, y) != GetPixel(caption.dc(), x, y) ? 1 : 0;
    EXPECT_GT(different, 0);
    control_->setCaptionStyle(false);
    EXPECT_GT(paintedUnlike(White), 0);
}

TEST_F(SimpleTextTest, drawsOverWhatLiesBehindIt)
{
    control_->move(50, 60);
    EXPECT_EQ(painted(5, 5), White);
    setBackground(RGB(10, 200, 30));
    EXPECT_EQ(painted(0, 0), RGB(10, 200, 30));
    control_->setText(L"Source:");
    EXPECT_GT(paintedUnlike(RGB(10, 200, 30)), 0);
}

TEST_F(SimpleTextTest, takesTheBackgroundAtItsOwnPlace)
{
    control_->move(45, 60);
    setBackground(RGB(10, 200, 30));
    EXPECT_EQ(painted(4, 5), White);
    EXPECT_EQ(painted(5, 5), RGB(10, 200, 30));
}

TEST_F(SimpleTextTest, isWhiteWithoutABackground)
{
    dynamic_cast<IControlBackground*>(base_)->setBackground(dialog_.window(), nullptr);
    EXPECT_EQ(paintedUnlike(White), 0);
}

TEST_F(SimpleTextTest, isNoStopForTheTabKey)
{
    EXPECT_FALSE(GetWindowLongPtrW(window(), GWL_STYLE) & WS_TABSTOP);
}

} // namespace Panekit
