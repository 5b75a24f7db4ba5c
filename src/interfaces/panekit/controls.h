#pragma once

#include <cstdint>

// The custom controls of the suite. These interfaces name system types by their plain equivalents: a window or a
// device context is a pointer, a colour is 0x00BBGGRR, a rectangle has the system's own layout.

struct ControlRect
{
    std::int32_t left;
    std::int32_t top;
    std::int32_t right;
    std::int32_t bottom;
};

/// Every control. All operations belong to the thread of the parent dialog; sizes are pixels in client
/// coordinates of the parent.
class ICustomControl
{
public:
    virtual void setWidth(int width, bool repaint) = 0;
    /// Takes the size that the content needs.
    virtual void fitToContent() = 0;
    virtual void setHeight(int height) = 0;
    virtual void move(int x, int y) = 0;
    virtual void getRect(ControlRect* rect) = 0;
    virtual void notCalled1() = 0;
    virtual void notCalled2() = 0;
    /// Height that the content needs at `width`.
    virtual int heightForWidth(int width) = 0;
    virtual void* getWindowHandle() = 0;
    /// Ends the control and its window.
    virtual void destroy() = 0;
    /// The id that the control's messages carry in `wParam`.
    virtual int getControlId() = 0;
    virtual void notCalled3() = 0;
    virtual void notCalled4() = 0;
    virtual void notCalled5() = 0;

protected:
    ~ICustomControl() = default;
};

/// Second base of the text controls.
class IControlBackground
{
public:
    /// Tells the control what lies behind it: the dialog and a memory device context of the dialog's size.
    virtual void setBackground(void* parentWindow, void* deviceContext) = 0;

protected:
    ~IControlBackground() = default;
};

class ICopyDialogGradient : public ICustomControl
{
public:
    /// The icon is a resource of type "PNG" in `module`.
    virtual void setIcon(void* module, const wchar_t* pngName) = 0;
    virtual void setText(const wchar_t* text) = 0;
    virtual void setColors(std::uint32_t first, std::uint32_t second) = 0;

protected:
    ~ICopyDialogGradient() = default;
};

class ITextWithLinks : public ICustomControl
{
public:
    /// The text may hold anchors: an `a` element with an `href` attribute.
    virtual void setText(const wchar_t* text) = 0;
    virtual void setCaptionStyle(bool on) = 0;

protected:
    ~ITextWithLinks() = default;
};

class ISimpleText : public ICustomControl
{
public:
    virtual void setText(const wchar_t* text) = 0;
    virtual void setCaptionStyle(bool on) = 0;
    /// Marks a line that holds a file path.
    virtual void setPathStyle() = 0;

protected:
    ~ISimpleText() = default;
};

class ITextWithPopupMenu : public ICustomControl
{
public:
    virtual void addItem(const wchar_t* text, const wchar_t* secondText) = 0;
    virtual void notCalled6() = 0;
    virtual void setCurrentItem(int index) = 0;
    /// The x coordinate at which the caption column of the dialog is aligned.
    virtual int getCaptionLeft() = 0;

protected:
    ~ITextWithPopupMenu() = default;
};

/// An edit with icon buttons at its right.
class IEditWithIconButtons : public ICustomControl
{
public:
    virtual void maskText() = 0;
    virtual void unmaskText() = 0;
    /// Owned by the control, valid until the next call: copy it at once.
    virtual const wchar_t* getText() = 0;
    virtual void setText(const wchar_t* text) = 0;
    /// The icon is a resource of type "PNG" in `module`.
    virtual void addIconButton(void* module, const wchar_t* pngName) = 0;
    virtual void showBalloon(const wchar_t* title, const wchar_t* text) = 0;
    virtual void setTextColor(std::uint32_t colour) = 0;

protected:
    ~IEditWithIconButtons() = default;
};

/// A drop-down list.
class IComboBox : public ICustomControl
{
public:
    virtual void addItem(const wchar_t* text) = 0;
    virtual void notCalled6() = 0;
    virtual void notCalled7() = 0;
    virtual void showDropDown() = 0;
    virtual void clearItems() = 0;
    /// Index from 0; -1 when nothing is chosen.
    virtual int getCurrentItem() = 0;
    virtual void setCurrentItem(int index) = 0;

protected:
    ~IComboBox() = default;
};

/// Class ids for `createControl`.
namespace ControlClass
{
inline constexpr const wchar_t* CopyDialogGradient = L"paneexpl7::copydialoggradient";
inline constexpr const wchar_t* TextWithLinks = L"panewin7::text::textwithlinks";
inline constexpr const wchar_t* SimpleText = L"panewin7::text::simpletext";
inline constexpr const wchar_t* TextWithPopupMenu = L"panewin7::text::textwithpopupmenu";
inline constexpr const wchar_t* EditWithIconButtons = L"paneexpl7::edit::editwithbuttons";
inline constexpr const wchar_t* ComboBox = L"panewin7::lists::combobox";
} // namespace ControlClass

/// Names of the messages that the controls send to their parent, for `RegisterWindowMessageW`.
namespace ControlMessage
{
inline constexpr const wchar_t* GetBackgroundInfo = L"IControlBackground_WM_GETBACKGROUNDINFO";
inline constexpr const wchar_t* UpdateBackground = L"IControlBackground_WM_UPDATEBACKGROUND";
inline constexpr const wchar_t* ItemChanged = L"ITextWithPopupMenuCombo_WM_ITEM_CHANGED";
inline constexpr const wchar_t* ButtonClicked = L"IEditWithIconButtons_WM_BUTTON_CLICKED";
inline constexpr const wchar_t* ButtonPressed = L"IEditWithIconButtons_WM_BUTTON_PRESSED";
inline constexpr const wchar_t* TextChanged = L"IEditWithIconButtons_WM_TEXT_CHANGED";
inline constexpr const wchar_t* HyperlinkClicked = L"ITextWithLinks_WM_HYPERLINKCLICKED";
inline constexpr const wchar_t* LinkMouseMove = L"ITextWithLinks_WM_MOUSEMOVE";
inline constexpr const wchar_t* LinkMouseLeave = L"ITextWithLinks_WM_MOUSELEAVE";
inline constexpr const wchar_t* LinkButtonDown = L"ITextWithLinks_WM_LBUTTONDOWN";
inline constexpr const wchar_t* LinkButtonUp = L"ITextWithLinks_WM_LBUTTONUP";
inline constexpr const wchar_t* SelectionChanged = L"IComboBox_WM_CBN_SELCHANGE";
} // namespace ControlMessage

/// Types of the module's exports, by their names.
using PanekitInitializeFunction = int (*)(const wchar_t* ownFolder);
using PanekitUninitializeFunction = void (*)();
using CreateControlFunction = ICustomControl* (*)(const wchar_t* classId, void* parent, int x, int y, int width,
                                                  int height);
