#include "resources/resource.h"
#include "windows/framework/win32/dialog.h"
#include "windows/framework/win32/readable_dialog.h"

#include <gtest/gtest.h>

namespace JobRunner
{

namespace
{

struct TemplateItem
{
    int id;
    const wchar_t* text;
    LONG left;
    LONG top;
    LONG width;
    LONG height;
};

INT_PTR CALLBACK doNothing(HWND, UINT, WPARAM, LPARAM)
{
    return FALSE;
}

/// A dialog as its template makes it, never shown.
class Template
{
public:
    explicit Template(int id)
        : window_(CreateDialogParamW(resourceModule(), MAKEINTRESOURCEW(id), nullptr, doNothing, 0))
    {
    }
    ~Template() { DestroyWindow(window_); }
    Template(const Template&) = delete;
    Template& operator=(const Template&) = delete;

    /// Its size in dialog units, its caption, and all that it holds.
    void expect(LONG width, LONG height, const std::wstring& caption, const std::vector<TemplateItem>& items) const
    {
        ASSERT_TRUE(window_);
        const OpenDialog dialog(window_);
        const RECT whole = fromUnits(window_, 0, 0, width, height);
        const RECT client = dialog.client();
        EXPECT_TRUE(EqualRect(&client, &whole));
        EXPECT_EQ(dialog.caption(), caption);
        EXPECT_EQ(dialog.controls().size(), items.size());
        for (const TemplateItem& item : items)
        {
            const ShownControl found = dialog.item(item.id);
            const RECT place = fromUnits(window_, item.left, item.top, item.width, item.height);
            EXPECT_TRUE(EqualRect(&found.place, &place)) << item.id;
            EXPECT_EQ(found.text, item.text);
        }
        EXPECT_EQ(LOWORD(SendMessageW(window_, DM_GETDEFID, 0, 0)), IDC_PROCEED);
    }
    std::wstring font() const
    {
        LOGFONTW description{};
        GetObjectW(reinterpret_cast<HFONT>(SendMessageW(window_, WM_GETFONT, 0, 0)), sizeof description, &description);
        return description.lfFaceName;
    }
    LONG_PTR style() const { return GetWindowLongPtrW(window_, GWL_STYLE); }
    LONG_PTR styleOf(int item) const { return GetWindowLongPtrW(GetDlgItem(window_, item), GWL_STYLE); }
    bool hasTaskbarButton() const { return (GetWindowLongPtrW(window_, GWL_EXSTYLE) & WS_EX_APPWINDOW) != 0; }

private:
    HWND window_;
};

void expectCaptionAndTaskbarButton(const Template& shown)
{
    const LONG_PTR wanted = WS_CAPTION | WS_SYSMENU;
    EXPECT_EQ(shown.style() & wanted, wanted);
    EXPECT_TRUE(shown.hasTaskbarButton());
    EXPECT_EQ(shown.font(), L"MS Sans Serif");
}

void expectThinBorder(const Template& shown)
{
    EXPECT_EQ(shown.style() & WS_CAPTION, WS_BORDER);
    EXPECT_FALSE(shown.hasTaskbarButton());
    EXPECT_EQ(shown.font(), L"MS Shell Dlg");
}

} // namespace

TEST(Templates, decryptionPassword)
{
    const Template shown(IDD_DECRYPTION_PASSWORD);
    shown.expect(
        274, 118, L"Enter Password",
        {{1, L"Proceed", 114, 100, 50, 15}, {5, L"Ignore", 166, 100, 50, 15}, {2, L"Cancel", 217, 100, 50, 15}});
    expectCaptionAndTaskbarButton(shown);
}

TEST(Templates, encryptionPassword)
{
    const Template shown(IDD_ENCRYPTION_PASSWORD);
    shown.expect(
        274, 118, L"Enter Password",
        {{1, L"Proceed", 166, 100, 50, 15}, {2, L"Cancel", 217, 100, 50, 15}, {3, L"show/hide", 7, 100, 50, 15}});
    expectCaptionAndTaskbarButton(shown);
}

TEST(Templates, riddle)
{
    const Template shown(IDD_RIDDLE);
    shown.expect(190, 48, L"",
                 {{1000, L"", 0, 0, 189, 32}, {1, L"OK", 106, 34, 41, 13}, {2, L"Cancel", 147, 34, 41, 13}});
    expectThinBorder(shown);
    EXPECT_EQ(shown.styleOf(1000) & (ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN), ES_MULTILINE | ES_AUTOVSCROLL);
}

TEST(Templates, sfxComment)
{
    const Template shown(IDD_SFX_COMMENT);
    shown.expect(288, 61, L"",
                 {{1000, L"", 0, 0, 286, 43},
                  {1, L"OK", 203, 46, 41, 13},
                  {2, L"Cancel", 245, 46, 41, 13},
                  {1001, L"Set Default", 3, 49, 52, 10}});
    expectThinBorder(shown);
    const LONG_PTR edit = ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN;
    EXPECT_EQ(shown.styleOf(1000) & edit, edit);
    EXPECT_EQ(shown.styleOf(1001) & BS_TYPEMASK, BS_AUTOCHECKBOX);
}

} // namespace JobRunner
