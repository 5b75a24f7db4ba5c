#pragma once

#include "interfaces/panekit/controls.h"
#include "windows/drawing/gdi_handles.h"
#include "windows/drawing/memory_buffer.h"

#include <string>

#include <windows.h>

namespace Panekit
{

/// The module that holds this code: the control module, or the program that it is linked into.
HINSTANCE ownModule();

/// The window of one control: painting without flicker, place and size, fonts, messages to the parent. Belongs to
/// the thread of the parent. The window may end before the object, with its parent; the operations do nothing then.
class ControlWindow
{
public:
    ControlWindow() = default;
    ControlWindow(const ControlWindow&) = delete;
    ControlWindow& operator=(const ControlWindow&) = delete;

    /// Makes the window, visible. False when the system refuses.
    bool open(const wchar_t* className, HWND parent, const RECT& area);
    void close();

    HWND window() const { return window_; }
    int id() const { return id_; }
    /// In client coordinates of the parent.
    RECT area() const;
    void changeWidth(int width, bool repaint);
    void changeHeight(int height);
    void moveTo(int x, int y);
    void takeContentSize();
    /// Size that the content needs at `width`; 0 and less put no limit to the width.
    virtual SIZE contentSize(int width) = 0;
    /// Copies what lies behind the control, and repaints.
    void takeBackground(HWND parent, HDC source);

    /// Registers the window class of a control under its class id. Doing it again does no harm.
    static void registerClass(const wchar_t* className);
    static void unregisterClass(const wchar_t* className);

protected:
    ~ControlWindow();

    /// Draws all of the control; `client` starts at 0, 0.
    virtual void paint(HDC dc, const RECT& client) = 0;
    virtual LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam);
    /// Whether a new width brings the height along that the content needs.
    virtual bool followsContent() const { return false; }
    virtual DWORD windowStyle() const { return 0; }
    virtual DWORD extendedStyle() const { return 0; }
    virtual void onOpened() {}
    virtual void onFontChanged() {}

    void paintBackground(HDC dc, const RECT& client);
    /// The text that other programs read.
    void publishText(const std::wstring& text);
    void invalidate();
    /// `value` pixels at 96 dots per inch, turned to the density of the screen.
    int scaled(int value) const;
    /// The font that the control was given, otherwise that of the parent dialog.
    HFONT font() const;
    HFONT boldFont();
    HFONT underlinedFont();
    int lineHeight(HFONT ofFont) const;
    LRESULT tellParent(const wchar_t* messageName, LPARAM lParam);

private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);
    void place(const RECT& area, bool repaint);
    void onPaint();
    void paintBuffered(HDC dc);
    void takeFont(HFONT font);
    HFONT derivedFont(Drawing::GdiObject<HFONT>& kept, LONG weight, BYTE underline);

    HWND window_ = nullptr;
    int id_ = 0;
    HFONT given_ = nullptr; // owned by the one who gave it
    Drawing::MemoryBuffer background_;
    Drawing::GdiObject<HFONT> bold_;
    Drawing::GdiObject<HFONT> underlined_;
};

} // namespace Panekit
