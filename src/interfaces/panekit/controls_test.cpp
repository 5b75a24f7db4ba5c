#include "interfaces/panekit/controls.h"

#include "interfaces/testing_tables.h"

#include <gtest/gtest.h>

using Fakes::expectSlots;

TEST(TheTableOfTheControls, hasTheCommonOperationsInOrder)
{
    using T = ICustomControl;
    expectSlots(0, &T::setWidth, &T::fitToContent, &T::setHeight, &T::move, &T::getRect, &T::notCalled1, &T::notCalled2,
                &T::heightForWidth, &T::getWindowHandle, &T::destroy, &T::getControlId, &T::notCalled3, &T::notCalled4,
                &T::notCalled5);
    expectSlots(0, &IControlBackground::setBackground);
}

TEST(TheTableOfTheControls, hasTheOperationsOfEachControlBehindThem)
{
    expectSlots(14, &ICopyDialogGradient::setIcon, &ICopyDialogGradient::setText, &ICopyDialogGradient::setColors);
    expectSlots(14, &ITextWithLinks::setText, &ITextWithLinks::setCaptionStyle);
    expectSlots(14, &ISimpleText::setText, &ISimpleText::setCaptionStyle, &ISimpleText::setPathStyle);
    expectSlots(14, &ITextWithPopupMenu::addItem, &ITextWithPopupMenu::notCalled6, &ITextWithPopupMenu::setCurrentItem,
                &ITextWithPopupMenu::getCaptionLeft);
}

// A module that is built elsewhere knows these by their letters alone.
TEST(TheNamesOfTheControls, areThoseThatTheModuleKnows)
{
    EXPECT_STREQ(ControlClass::CopyDialogGradient, L"paneexpl7::copydialoggradient");
    EXPECT_STREQ(ControlClass::TextWithLinks, L"panewin7::text::textwithlinks");
    EXPECT_STREQ(ControlClass::SimpleText, L"panewin7::text::simpletext");
    EXPECT_STREQ(ControlClass::TextWithPopupMenu, L"panewin7::text::textwithpopupmenu");
}

TEST(TheNamesOfTheControls, ofTheirMessagesAreThoseThatTheModuleKnows)
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
