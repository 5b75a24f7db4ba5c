#include "windows/file_error/win32/file_error_window_view.h"

#include "resources/resource.h"
#include "windows/framework/win32/controls.h"
#include "windows/framework/win32/dialog_visitor.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace JobRunner
{

namespace
{

std::wstring textOf(HWND window)
{
    std::vector<wchar_t> text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1);
    GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
    return text.data();
}

RECT placeOf(HWND window, HWND dialog)
{
    RECT rect{};
    GetWindowRect(window, &rect);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

struct Child
{
    std::wstring text;
    RECT place;
    bool isButton;
};

/// What an open dialog shows.
struct Seen
{
    std::wstring title;
    std::vector<Child> children;
    RECT client{};
    LONG windowBottom = 0; // in client coordinates
    LONG_PTR style = 0;

    const Child* find(const std::wstring& text) const
    {
        for (const Child& child : children)
            if (child.text == text)
                return &child;
        return nullptr;
    }
    bool shows(const std::wstring& text) const { return find(text) != nullptr; }
    RECT place(const std::wstring& text) const { return find(text) ? find(text)->place : RECT{}; }
};

BOOL CALLBACK addChild(HWND child, LPARAM lParam)
{
    wchar_t name[100] = {};
    GetClassNameW(child, name, 100);
    const bool isButton = lstrcmpiW(name, L"Button") == 0;
    reinterpret_cast<Seen*>(lParam)->children.push_back({textOf(child), placeOf(child, GetParent(child)), isButton});
    return TRUE;
}

Seen look(HWND dialog)
{
    Seen seen;
    seen.title = textOf(dialog);
    seen.style = GetWindowLongPtrW(dialog, GWL_STYLE);
    GetClientRect(dialog, &seen.client);
    seen.windowBottom = placeOf(dialog, dialog).bottom;
    EnumChildWindows(dialog, addChild, reinterpret_cast<LPARAM>(&seen));
    return seen;
}

class FileErrorDialog : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(RealControls::areLoaded()); }

    /// Opens the dialog, looks at it, and ends it.
    Seen open(const std::function<void(HWND)>& end)
    {
        Seen seen;
        const DialogVisitor visitor(
            [&](HWND dialog)
            {
                seen = look(dialog);
                end(dialog);
            });
        answer_ = view_.doModal();
        return seen;
    }
    Seen open() { return open(closeBox); }

    static std::function<void(HWND)> click(int button)
    {
        return [button](HWND dialog) { PostMessageW(GetDlgItem(dialog, button), BM_CLICK, 0, 0); };
    }
    static void closeBox(HWND dialog) { PostMessageW(dialog, WM_SYSCOMMAND, SC_CLOSE, 0); }

    FileErrorWindowView view_;
    int answer_ = -1;
};

std::wstring longPath(const wchar_t* start)
{
    std::wstring path = start;
    while (path.size() < 300)
        path += L"\\a folder with a name";
    return path + L"\\report.docx";
}

bool overlap(const RECT& one, const RECT& two)
{
    RECT common{};
    return IntersectRect(&common, &one, &two) != FALSE;
}

void expectNoOverlap(const Seen& seen)
{
    for (std::size_t i = 0; i < seen.children.size(); ++i)
        for (std::size_t j = i + 1; j < seen.children.size(); ++j)
            EXPECT_FALSE(overlap(seen.children[i].place, seen.children[j].place)) << i << " and " << j;
    for (const Child& child : seen.children)
    {
        EXPECT_GE(child.place.left, 0);
        EXPECT_LE(child.place.right, seen.client.right);
        EXPECT_LE(child.place.bottom, seen.client.bottom);
    }
}

} // namespace

TEST_F(FileErrorDialog, answersEachButton)
{
    open(click(IDC_TRY_AGAIN));
    EXPECT_EQ(answer_, FileErrorTryAgain);
    open(click(IDC_SKIP_FILE));
    EXPECT_EQ(answer_, FileErrorSkipFile);
    open(click(IDC_ABORT_JOB));
    EXPECT_EQ(answer_, FileErrorAbortJob);
}

TEST_F(FileErrorDialog, answersAbortForTheCloseBox)
{
    open(closeBox);
    EXPECT_EQ(answer_, FileErrorAbortJob);
}

TEST_F(FileErrorDialog, showsItsDefaultTexts)
{
    const Seen seen = open();
    EXPECT_EQ(seen.title, L"File Error Occured");
    EXPECT_TRUE(seen.shows(L"Please choose what to do with file."));
    EXPECT_TRUE(seen.shows(L"Unknown error occured"));
    EXPECT_TRUE(seen.shows(L"Source:"));
    EXPECT_FALSE(seen.shows(L"Target:"));
    EXPECT_TRUE(seen.shows(L"Try Again"));
    EXPECT_TRUE(seen.shows(L"Skip File"));
    EXPECT_TRUE(seen.shows(L"Abort"));
}

TEST_F(FileErrorDialog, showsTheTextsThatItWasGiven)
{
    view_.setTitle(L"Encrypt");
    view_.setHeader(L"Cannot open the file.");
    view_.setSource(L"C:\\a & b\\one.txt");
    view_.setTarget(L"C:\\a & b\\ONE.txt");
    view_.setMessage(L"Access is denied.");
    const Seen seen = open();
    EXPECT_EQ(seen.title, L"Encrypt");
    for (const wchar_t* const text :
         {L"Cannot open the file.", L"C:\\a & b\\one.txt", L"C:\\a & b\\ONE.txt", L"Access is denied.", L"Target:"})
        EXPECT_TRUE(seen.shows(text));
    expectNoOverlap(seen);
}

TEST_F(FileErrorDialog, withAGivenTitleShowsAnEmptyHeader)
{
    view_.setTitle(L"Encrypt");
    view_.setHeader(L"");
    const Seen seen = open();
    EXPECT_FALSE(seen.shows(L"Please choose what to do with file."));
    EXPECT_EQ(seen.title, L"Encrypt");
}

TEST_F(FileErrorDialog, isLowerWithoutATarget)
{
    view_.setSource(L"C:\\one.txt");
    const Seen without = open();
    view_.setTarget(L"C:\\two.txt");
    const Seen with = open();
    const RECT caption = with.place(L"Source:");
    const RECT path = with.place(L"C:\\two.txt");
    EXPECT_EQ(with.windowBottom - without.windowBottom, path.bottom - path.top + (caption.bottom - caption.top) / 2);
}

TEST_F(FileErrorDialog, placesItsControls)
{
    view_.setSource(L"C:\\one.txt");
    view_.setTarget(L"C:\\two.txt");
    const Seen seen = open();
    const RECT header = seen.place(L"Please choose what to do with file.");
    const RECT message = seen.place(L"Unknown error occured");
    const RECT caption = seen.place(L"Source:");
    const RECT source = seen.place(L"C:\\one.txt");
    const RECT target = seen.place(L"C:\\two.txt");
    const RECT button = seen.place(L"Try Again");
    const LONG buttonHeight = button.bottom - button.top;
    EXPECT_EQ(header.top, 0);
    EXPECT_EQ(header.right, seen.client.right);
    EXPECT_EQ(message.left, 15);
    EXPECT_EQ(message.top, header.bottom + 15);
    EXPECT_EQ(message.right, seen.client.right - 15);
    EXPECT_EQ(caption.left, 60);
    EXPECT_EQ(caption.top, message.bottom + 10);
    EXPECT_EQ(source.top, caption.top);
    EXPECT_GE(source.left, caption.right + 7);
    EXPECT_EQ(source.right, seen.client.right - 15);
    EXPECT_EQ(target.left, source.left);
    EXPECT_EQ(target.top, source.bottom + (caption.bottom - caption.top) / 2);
    EXPECT_EQ(button.top, target.bottom + buttonHeight);
    EXPECT_EQ(seen.windowBottom, button.bottom + buttonHeight / 2);
    EXPECT_TRUE(seen.style & WS_CLIPCHILDREN);
    expectNoOverlap(seen);
}

TEST_F(FileErrorDialog, takesLongPathsAndALongMessage)
{
    view_.setSource(longPath(L"C:").c_str());
    view_.setTarget(longPath(L"D:").c_str());
    view_.setMessage((L"The file cannot be opened: " + longPath(L"E:")).c_str());
    const Seen seen = open();
    EXPECT_TRUE(seen.shows(longPath(L"C:")));
    EXPECT_TRUE(seen.shows(longPath(L"D:")));
    const RECT path = seen.place(longPath(L"C:"));
    const RECT caption = seen.place(L"Source:");
    EXPECT_EQ(path.bottom - path.top, caption.bottom - caption.top);
    expectNoOverlap(seen);
}

TEST_F(FileErrorDialog, showsAnEmptyMessageAsAnEmptyLine)
{
    view_.setMessage(L"");
    const Seen seen = open();
    const RECT header = seen.place(L"Please choose what to do with file.");
    const RECT caption = seen.place(L"Source:");
    EXPECT_EQ(caption.top, header.bottom + 15 + (caption.bottom - caption.top) + 10);
}

TEST_F(FileErrorDialog, paintsAWhitePanelAboveAGreyBand)
{
    COLORREF panel = 0;
    COLORREF line = 0;
    COLORREF band = 0;
    open(
        [&](HWND dialog)
        {
            const RECT button = placeOf(GetDlgItem(dialog, IDC_TRY_AGAIN), dialog);
            const int lineY = static_cast<int>(button.top - (button.bottom - button.top) / 2);
            RECT client{};
            GetClientRect(dialog, &client);
            const HDC screen = GetDC(nullptr);
            Drawing::MemoryBuffer picture;
            picture.create(screen, static_cast<int>(client.right), static_cast<int>(client.bottom));
            ReleaseDC(nullptr, screen);
            SendMessageW(dialog, WM_ERASEBKGND, reinterpret_cast<WPARAM>(picture.dc()), 0);
            panel = GetPixel(picture.dc(), 3, lineY - 1);
            line = GetPixel(picture.dc(), 3, lineY);
            band = GetPixel(picture.dc(), 3, lineY + 1);
            closeBox(dialog);
        });
    EXPECT_EQ(panel, RGB(255, 255, 255));
    EXPECT_EQ(line, RGB(183, 231, 252));
    EXPECT_EQ(band, RGB(240, 240, 240));
}

TEST(CreateControl, givesNullForAnUnknownClassOfTheRealModule)
{
    ASSERT_TRUE(RealControls::areLoaded());
    EXPECT_FALSE(createControl(L"nosuchclass", GetDesktopWindow(), 0, 0, 1, 1));
}

TEST(CreateControl, givesTextsOfTheRealModuleThatTakeABackground)
{
    ASSERT_TRUE(RealControls::areLoaded());
    const HWND parent = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 50, 50, nullptr, nullptr, nullptr, nullptr);
    ICustomControl* const text = createControl(ControlClass::SimpleText, parent, 0, 0, 10, 10);
    ASSERT_TRUE(text);
    EXPECT_TRUE(dynamic_cast<IControlBackground*>(text));
    text->destroy();
    DestroyWindow(parent);
}

} // namespace JobRunner
