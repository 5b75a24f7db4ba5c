#include "interfaces/panekit/controls.h"

#include <gtest/gtest.h>

// A control module that is built apart knows these names too, so that neither side may change one.

TEST(ControlClassIds, areThoseOfEveryControlModule)
{
    EXPECT_STREQ(ControlClass::CopyDialogGradient, L"paneexpl7::copydialoggradient");
    EXPECT_STREQ(ControlClass::TextWithLinks, L"panewin7::text::textwithlinks");
    EXPECT_STREQ(ControlClass::SimpleText, L"panewin7::text::simpletext");
    EXPECT_STREQ(ControlClass::TextWithPopupMenu, L"panewin7::text::textwithpopupmenu");
    EXPECT_STREQ(ControlClass::EditWithIconButtons, L"paneexpl7::edit::editwithbuttons");
    EXPECT_STREQ(ControlClass::ComboBox, L"panewin7::lists::combobox");
}

TEST(ControlMessages, haveTheNamesOfEveryControlModule)
{
    EXPECT_STREQ(ControlMessage::GetBackgroundInfo, L"IControlBackground_WM_GETBACKGROUNDINFO");
    EXPECT_STREQ(ControlMessage::UpdateBackground, L"IControlBackground_WM_UPDATEBACKGROUND");
    EXPECT_STREQ(ControlMessage::ItemChanged, L"ITextWithPopupMenuCombo_WM_ITEM_CHANGED");
    EXPECT_STREQ(ControlMessage::ButtonClicked, L"IEditWithIconButtons_WM_BUTTON_CLICKED");
    EXPECT_STREQ(ControlMessage::ButtonPressed, L"IEditWithIconButtons_WM_BUTTON_PRESSED");
    EXPECT_STREQ(ControlMessage::TextChanged, L"IEditWithIconButtons_WM_TEXT_CHANGED");
    EXPECT_STREQ(ControlMessage::HyperlinkClicked, L"ITextWithLinks_WM_HYPERLINKCLICKED");
    EXPECT_STREQ(ControlMessage::LinkMouseMove, L"ITextWithLinks_WM_MOUSEMOVE");
    EXPECT_STREQ(ControlMessage::LinkMouseLeave, L"ITextWithLinks_WM_MOUSELEAVE");
    EXPECT_STREQ(ControlMessage::LinkButtonDown, L"ITextWithLinks_WM_LBUTTONDOWN");
    EXPECT_STREQ(ControlMessage::LinkButtonUp, L"ITextWithLinks_WM_LBUTTONUP");
    EXPECT_STREQ(ControlMessage::SelectionChanged, L"IComboBox_WM_CBN_SELCHANGE");
}
