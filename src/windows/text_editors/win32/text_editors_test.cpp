#include "resources/resource.h"
#include "windows/framework/win32/dialog_visitor.h"
#include "windows/text_editors/win32/riddle_window_view.h"
#include "windows/text_editors/win32/sfx_comment_window_view.h"

#include <gtest/gtest.h>

#include <memory>

namespace JobRunner
{

namespace
{

struct Released
{
    template <class View> void operator()(View* view) const { view->release(); }
};

std::wstring shownText(HWND dialog)
{
    wchar_t text[200] = {};
    GetDlgItemTextW(dialog, IDC_EDITOR_TEXT, text, 200);
    return text;
}

void click(HWND dialog, int item)
{
    PostMessageW(GetDlgItem(dialog, item), BM_CLICK, 0, 0);
}

/// Place of an item in dialog units, from the pixels that it takes.
RECT unitsOf(HWND dialog, int item)
{
    RECT unit{0, 0, 400, 800};
    MapDialogRect(dialog, &unit);
    RECT place{};
    GetWindowRect(GetDlgItem(dialog, item), &place);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
    const auto across = [&](LONG pixels) { return (pixels * 400 + unit.right / 2) / unit.right; };
    const auto down = [&](LONG pixels) { return (pixels * 800 + unit.bottom / 2) / unit.bottom; };
    return {across(place.left), down(place.top), across(place.right - place.left), down(place.bottom - place.top)};
}

void expectPlace(HWND dialog, int item, LONG left, LONG top, LONG width, LONG height)
{
    const RECT place = unitsOf(dialog, item);
    EXPECT_EQ(place.left, left) << item;
    EXPECT_EQ(place.top, top) << item;
    EXPECT_EQ(place.right, width) << item;
    EXPECT_EQ(place.bottom, height) << item;
}

template <class View> class Editor : public testing::Test
{
protected:
    template <class Visit> bool open(Visit visit)
    {
        const DialogVisitor visitor(visit);
        return view->doModal();
    }

    std::unique_ptr<View, Released> view{new View};
};

using RiddleEditor = Editor<RiddleWindowView>;
using CommentEditor = Editor<SfxCommentWindowView>;
template <class View> using EachEditor = Editor<View>;
using Editors = testing::Types<RiddleWindowView, SfxCommentWindowView>;
TYPED_TEST_SUITE(EachEditor, Editors);

} // namespace

TYPED_TEST(EachEditor, showsTheTextAndTakesWhatWasTyped)
{
    this->view->setText(L"first pet");
    std::wstring shown;
    EXPECT_TRUE(this->open(
        [&](HWND dialog)
        {
            shown = shownText(dialog);
            SetDlgItemTextW(dialog, IDC_EDITOR_TEXT, L"second\r\nhouse");
            click(dialog, IDC_PROCEED);
        }));
    EXPECT_EQ(shown, L"first pet");
    EXPECT_EQ(this->view->getText(), L"second\r\nhouse");
}

TYPED_TEST(EachEditor, takesAnEmptyText)
{
    this->view->setText(L"first pet");
    EXPECT_TRUE(this->open(
        [](HWND dialog)
        {
            SetDlgItemTextW(dialog, IDC_EDITOR_TEXT, L"");
            click(dialog, IDC_PROCEED);
        }));
    EXPECT_EQ(this->view->getText(), L"");
}

TYPED_TEST(EachEditor, leavesTheTextAfterCancel)
{
    this->view->setText(L"first pet");
    EXPECT_FALSE(this->open(
        [](HWND dialog)
        {
            SetDlgItemTextW(dialog, IDC_EDITOR_TEXT, L"other");
            click(dialog, IDC_CANCEL);
        }));
    EXPECT_EQ(this->view->getText(), L"first pet");
}

TYPED_TEST(EachEditor, takesATextOfAnyLength)
{
    std::wstring text;
    while (text.size() < 40000) // more than an edit takes by itself
        text += L"a line of some words\r\n";
    this->view->setText(text);
    EXPECT_TRUE(this->open(
        [&](HWND dialog)
        {
            const auto most =
                static_cast<std::size_t>(SendDlgItemMessageW(dialog, IDC_EDITOR_TEXT, EM_GETLIMITTEXT, 0, 0));
            EXPECT_GT(most, text.size()) << "so much can be typed too";
            click(dialog, IDC_PROCEED);
        }));
    EXPECT_EQ(this->view->getText(), text);
}

TYPED_TEST(EachEditor, opensAtThePointerEvenPartlyOutsideTheScreen)
{
    const POINT corner{GetSystemMetrics(SM_CXSCREEN) - 20, GetSystemMetrics(SM_CYSCREEN) - 10};
    RECT place{};
    POINT pointer{};
    // A window that was just closed can throw the pointer back to where it stood before.
    for (int attempt = 0; attempt < 10 && pointer.x != corner.x; ++attempt)
    {
        SetCursorPos(corner.x, corner.y);
        this->open(
            [&](HWND dialog)
            {
                GetWindowRect(dialog, &place);
                GetCursorPos(&pointer);
                click(dialog, IDC_CANCEL);
            });
    }
    EXPECT_EQ(place.left, pointer.x);
    EXPECT_EQ(place.top, pointer.y);
    EXPECT_GT(place.right, GetSystemMetrics(SM_CXSCREEN));
}

TEST_F(RiddleEditor, hasTheItemsOfItsTemplate)
{
    this->open(
        [](HWND dialog)
        {
            expectPlace(dialog, IDC_EDITOR_TEXT, 0, 0, 189, 32);
            expectPlace(dialog, IDC_PROCEED, 106, 34, 41, 13);
            expectPlace(dialog, IDC_CANCEL, 147, 34, 41, 13);
            EXPECT_EQ(GetWindowLongPtrW(dialog, GWL_STYLE) & WS_CAPTION, WS_BORDER);
            click(dialog, IDC_CANCEL);
        });
}

TEST_F(CommentEditor, hasTheItemsOfItsTemplate)
{
    this->open(
        [](HWND dialog)
        {
            expectPlace(dialog, IDC_EDITOR_TEXT, 0, 0, 286, 43);
            expectPlace(dialog, IDC_PROCEED, 203, 46, 41, 13);
            expectPlace(dialog, IDC_CANCEL, 245, 46, 41, 13);
            expectPlace(dialog, IDC_SET_DEFAULT, 3, 49, 52, 10);
            EXPECT_TRUE(GetWindowLongPtrW(GetDlgItem(dialog, IDC_EDITOR_TEXT), GWL_STYLE) & ES_WANTRETURN);
            click(dialog, IDC_CANCEL);
        });
}

TEST_F(CommentEditor, tellsOfTheBoxOnceConfirmed)
{
    EXPECT_TRUE(open(
        [](HWND dialog)
        {
            EXPECT_EQ(IsDlgButtonChecked(dialog, IDC_SET_DEFAULT), UINT{BST_UNCHECKED});
            CheckDlgButton(dialog, IDC_SET_DEFAULT, BST_CHECKED);
            click(dialog, IDC_PROCEED);
        }));
    EXPECT_TRUE(view->isSetDefault());
}

TEST_F(CommentEditor, leavesTheBoxAfterCancel)
{
    EXPECT_FALSE(open(
        [](HWND dialog)
        {
            CheckDlgButton(dialog, IDC_SET_DEFAULT, BST_CHECKED);
            click(dialog, IDC_CANCEL);
        }));
    EXPECT_FALSE(view->isSetDefault());
}

TEST_F(CommentEditor, opensUncheckedAgainAfterTheBoxWasTaken)
{
    open(
        [](HWND dialog)
        {
            CheckDlgButton(dialog, IDC_SET_DEFAULT, BST_CHECKED);
            click(dialog, IDC_PROCEED);
        });
    UINT state = BST_CHECKED;
    open(
        [&](HWND dialog)
        {
            state = IsDlgButtonChecked(dialog, IDC_SET_DEFAULT);
            click(dialog, IDC_CANCEL);
        });
    EXPECT_EQ(state, UINT{BST_UNCHECKED});
}

} // namespace JobRunner
