#include "panekit/control_window.h"

#include "panekit/density.h"

#include <algorithm>

namespace Panekit
{

namespace
{

constexpr COLORREF White = RGB(255, 255, 255);
// Far above the ids of buttons in a template, and within the 16 bits of a command message.
constexpr int FirstId = 20000;
constexpr int IdCount = 10000;

int nextId()
{
    static volatile LONG last = 0;
    return FirstId + static_cast<int>(InterlockedIncrement(&last) % IdCount);
}

HWND parentOf(HWND window)
{
    return GetAncestor(window, GA_PARENT);
}

LONG widthOf(const RECT& rect)
{
    return rect.right - rect.left;
}

LONG heightOf(const RECT& rect)
{
    return rect.bottom - rect.top;
}

} // namespace

HINSTANCE ownModule()
{
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&ownModule), &module);
    return module;
}

ControlWindow::~ControlWindow()
{
    close();
}

bool ControlWindow::open(const wchar_t* className, HWND parent, const RECT& area)
{
    id_ = nextId();
    CreateWindowExW(extendedStyle(), className, L"", WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | windowStyle(),
                    static_cast<int>(area.left), static_cast<int>(area.top), static_cast<int>(widthOf(area)),
                    static_cast<int>(heightOf(area)), parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id_)),
                    ownModule(), this);
    if (!window_)
        return false;
    onOpened();
    return true;
}

void ControlWindow::close()
{
    if (!window_)
        return;
    const HWND window = window_;
    // From here on the messages of the window go to the system alone: the object is on its way out.
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    window_ = nullptr;
    DestroyWindow(window);
}

RECT ControlWindow::area() const
{
    RECT area{};
    if (!window_)
        return area;
    GetWindowRect(window_, &area);
    MapWindowPoints(nullptr, parentOf(window_), reinterpret_cast<POINT*>(&area), 2);
    return area;
}

void ControlWindow::changeWidth(int width, bool repaint)
{
    RECT changed = area();
    changed.right = changed.left + width;
    if (followsContent())
        changed.bottom = changed.top + contentSize(width).cy;
    place(changed, repaint);
}

void ControlWindow::changeHeight(int height)
{
    RECT changed = area();
    changed.bottom = changed.top + height;
    place(changed, true);
}

void ControlWindow::moveTo(int x, int y)
{
    const RECT old = area();
    place(RECT{x, y, x + widthOf(old), y + heightOf(old)}, true);
}

void ControlWindow::takeContentSize()
{
    const SIZE size = contentSize(0);
    const RECT old = area();
    place(RECT{old.left, old.top, old.left + size.cx, old.top + size.cy}, true);
}

void ControlWindow::place(const RECT& newArea, bool repaint)
{
    MoveWindow(window_, static_cast<int>(newArea.left), static_cast<int>(newArea.top),
               static_cast<int>(widthOf(newArea)), static_cast<int>(heightOf(newArea)), repaint);
}

void ControlWindow::takeBackground(HWND parent, HDC source)
{
    background_.free();
    RECT own{};
    if (!window_ || !source || !GetClientRect(window_, &own))
        return;
    POINT at{0, 0};
    MapWindowPoints(window_, parent, &at, 1);
    const auto width = static_cast<int>(own.right);
    const auto height = static_cast<int>(own.bottom);
    if (!background_.create(source, width, height))
        return;
    Drawing::fillSolid(background_.dc(), own, White);
    BitBlt(background_.dc(), 0, 0, width, height, source, static_cast<int>(at.x), static_cast<int>(at.y), SRCCOPY);
    invalidate();
}

void ControlWindow::paintBackground(HDC dc, const RECT& client)
{
    // The parent may not have painted since the control came or grew; its panel is white.
    Drawing::fillSolid(dc, client, White);
    if (background_.dc())
        BitBlt(dc, 0, 0, background_.width(), background_.height(), background_.dc(), 0, 0, SRCCOPY);
}

void ControlWindow::registerClass(const wchar_t* className)
{
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = procedure;
    windowClass.hInstance = ownModule();
    windowClass.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    windowClass.lpszClassName = className;
    RegisterClassExW(&windowClass);
}

void ControlWindow::unregisterClass(const wchar_t* className)
{
    UnregisterClassW(className, ownModule());
}

LRESULT CALLBACK ControlWindow::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCCREATE)
    {
        auto* const self = static_cast<ControlWindow*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
        self->window_ = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, static_cast<LONG_PTR>(reinterpret_cast<INT_PTR>(self)));
    }
    auto* const self = reinterpret_cast<ControlWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return self ? self->handle(message, wParam, lParam) : DefWindowProcW(window, message, wParam, lParam);
}

LRESULT ControlWindow::handle(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message)
    {
    case WM_ERASEBKGND:
        return 1; // all is drawn at once, so that nothing flickers
    case WM_PAINT:
        onPaint();
        return 0;
    case WM_PRINTCLIENT:
        paintBuffered(reinterpret_cast<HDC>(wParam));
        return 0;
    case WM_SIZE:
        invalidate();
        break;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(font());
    case WM_SETFONT:
        takeFont(reinterpret_cast<HFONT>(wParam));
        if (LOWORD(lParam))
            invalidate();
        return 0;
    case WM_NCDESTROY:
    {
        const HWND window = window_;
        window_ = nullptr;
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        return DefWindowProcW(window, message, wParam, lParam);
    }
    default:
        break;
    }
    return onMessage(message, wParam, lParam);
}

LRESULT ControlWindow::onMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    return DefWindowProcW(window_, message, wParam, lParam);
}

void ControlWindow::onPaint()
{
    PAINTSTRUCT paintStruct{};
    const HDC dc = BeginPaint(window_, &paintStruct);
    if (dc)
        paintBuffered(dc);
    EndPaint(window_, &paintStruct);
}

void ControlWindow::paintBuffered(HDC dc)
{
    RECT client{};
    GetClientRect(window_, &client);
    Drawing::MemoryBuffer buffer;
    if (!buffer.create(dc, static_cast<int>(client.right), static_cast<int>(client.bottom)))
        return;
    paint(buffer.dc(), client);
    BitBlt(dc, 0, 0, buffer.width(), buffer.height(), buffer.dc(), 0, 0, SRCCOPY);
}

void ControlWindow::publishText(const std::wstring& text)
{
    SetWindowTextW(window_, text.c_str());
    invalidate();
}

void ControlWindow::invalidate()
{
    if (window_)
        InvalidateRect(window_, nullptr, FALSE);
}

int ControlWindow::scaled(int value) const
{
    return MulDiv(value, densityOf(window_), PlainDensity);
}

HFONT ControlWindow::font() const
{
    if (given_)
        return given_;
    const auto ofParent = reinterpret_cast<HFONT>(SendMessageW(parentOf(window_), WM_GETFONT, 0, 0));
    return ofParent ? ofParent : static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
}

void ControlWindow::takeFont(HFONT font)
{
    given_ = font;
    bold_.reset();
    underlined_.reset();
    onFontChanged();
}

HFONT ControlWindow::derivedFont(Drawing::GdiObject<HFONT>& kept, LONG weight, BYTE underline)
{
    if (kept)
        return kept.get();
    LOGFONTW description{};
    GetObjectW(font(), sizeof description, &description);
    description.lfWeight = std::max(description.lfWeight, weight);
    description.lfUnderline = underline;
    kept.reset(CreateFontIndirectW(&description));
    return kept ? kept.get() : font();
}

HFONT ControlWindow::boldFont()
{
    return derivedFont(bold_, FW_BOLD, FALSE);
}

HFONT ControlWindow::underlinedFont()
{
    return derivedFont(underlined_, FW_DONTCARE, TRUE);
}

int ControlWindow::lineHeight(HFONT ofFont) const
{
    const Drawing::WindowDc dc(window_);
    const Drawing::Selected selected(dc.get(), ofFont);
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc.get(), &metrics);
    return static_cast<int>(metrics.tmHeight);
}

LRESULT ControlWindow::tellParent(const wchar_t* messageName, LPARAM lParam)
{
    return SendMessageW(parentOf(window_), RegisterWindowMessageW(messageName), static_cast<WPARAM>(id_), lParam);
}

} // namespace Panekit
