#pragma once

#include "panekit/control_factory.h"
#include "windows/drawing/gdi_handles.h"
#include "windows/drawing/memory_buffer.h"

#include <functional>
#include <map>
#include <string>
#include <utility>

#include <gtest/gtest.h>
#include <windows.h>

namespace Panekit
{

/// A hidden parent window for controls that remembers the registered messages that it is sent.
class TestDialog
{
public:
    struct Message
    {
        int count = 0;
        WPARAM wParam = 0;
        LPARAM lParam = 0;
        std::wstring text; // what `lParam` points to, for a followed link
    };

    TestDialog()
    {
        start();
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = procedure;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.lpszClassName = L"test dialog";
        RegisterClassW(&windowClass);
        window_ = CreateWindowExW(0, windowClass.lpszClassName, L"", WS_POPUP | WS_CLIPCHILDREN, 10, 10, 400, 300,
                                  nullptr, nullptr, windowClass.hInstance, this);
    }
    ~TestDialog()
    {
        DestroyWindow(window_);
        UnregisterClassW(L"test dialog", GetModuleHandleW(nullptr));
        stop();
    }
    TestDialog(const TestDialog&) = delete;
    TestDialog& operator=(const TestDialog&) = delete;

    HWND window() const { return window_; }
    void show() { ShowWindow(window_, SW_SHOWNOACTIVATE); }
    /// Called on each registered message, before it is remembered.
    void onMessage(std::function<void(UINT)> answer) { answer_ = std::move(answer); }
    const Message& received(const wchar_t* name) { return messages_[RegisterWindowMessageW(name)]; }

private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (message == WM_NCCREATE)
            SetWindowLongPtrW(window, GWLP_USERDATA,
                              reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams));
        auto* const self = reinterpret_cast<TestDialog*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        constexpr UINT FirstRegistered = 0xC000;
        if (self && message >= FirstRegistered)
            self->remember(message, wParam, lParam);
        return DefWindowProcW(window, message, wParam, lParam);
    }

    void remember(UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (const auto answer = answer_)
            answer(message);
        Message& kept = messages_[message];
        ++kept.count;
        kept.wParam = wParam;
        kept.lParam = lParam;
        if (message == RegisterWindowMessageW(ControlMessage::HyperlinkClicked))
            kept.text = reinterpret_cast<const wchar_t*>(lParam);
    }

    HWND window_ = nullptr;
    std::function<void(UINT)> answer_;
    std::map<UINT, Message> messages_;
};

/// A test with a parent window and one control of a class.
template <class Interface> class ControlTest : public testing::Test
{
protected:
    explicit ControlTest(const wchar_t* classId)
        : base_(makeControl(classId, dialog_.window(), 0, 0, 100, 50)), control_(static_cast<Interface*>(base_))
    {
    }
    ~ControlTest() override
    {
        if (control_)
            control_->destroy();
    }

    HWND window() { return static_cast<HWND>(control_->getWindowHandle()); }
    ControlRect rect()
    {
        ControlRect rect{};
        control_->getRect(&rect);
        return rect;
    }
    int width() { return rect().right - rect().left; }
    int height() { return rect().bottom - rect().top; }
    int heightOfOneLine()
    {
        control_->fitToContent();
        return height();
    }

    std::wstring windowText()
    {
        std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window())) + 1, L'\0');
        text.resize(static_cast<std::size_t>(GetWindowTextW(window(), text.data(), static_cast<int>(text.size()))));
        return text;
    }

    /// Draws the control into `buffer`, in its own size.
    void paintInto(Drawing::MemoryBuffer& buffer)
    {
        const Drawing::WindowDc screen(nullptr);
        buffer.create(screen.get(), width(), height());
        SendMessageW(window(), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(buffer.dc()), PRF_CLIENT);
    }

    /// Colour of a pixel as the control paints itself.
    COLORREF painted(int x, int y)
    {
        Drawing::MemoryBuffer buffer;
        paintInto(buffer);
        return GetPixel(buffer.dc(), x, y);
    }

    /// Number of pixels from column `from` on that are not of the colour.
    int paintedUnlike(COLORREF colour, int from = 0)
    {
        Drawing::MemoryBuffer buffer;
        paintInto(buffer);
        int count = 0;
        for (int y = 0; y < buffer.height(); ++y)
            for (int x = from; x < buffer.width(); ++x)
                count += GetPixel(buffer.dc(), x, y) != colour ? 1 : 0;
        return count;
    }

    TestDialog dialog_;
    ICustomControl* base_;
    Interface* control_;
};

} // namespace Panekit
