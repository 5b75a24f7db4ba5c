#pragma once

#include <functional>
#include <string>

#include <windows.h>

namespace Panekit
{

/// The system's edit of one line, without a frame, as the inside of a control.
class TextField
{
public:
    TextField() = default;
    TextField(const TextField&) = delete;
    TextField& operator=(const TextField&) = delete;

    /// `touched` is called before each key and each click in the field. The window goes with its parent.
    void open(HWND parent, std::function<void()> touched);
    HWND window() const { return window_; }

    void setFont(HFONT font);
    /// In client coordinates of the parent.
    void place(const RECT& area);
    /// Puts a character for each one typed. Text, selection and caret stay.
    void mask();
    void unmask();
    std::wstring text() const;
    /// The caret goes behind the text.
    void setText(const std::wstring& text);

private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                      DWORD_PTR self);
    bool onTyped(WPARAM character);
    void showAs(wchar_t character);
    void select(DWORD start, DWORD end);
    wchar_t maskCharacter() const;

    HWND window_ = nullptr;
    std::function<void()> touched_;
    bool masked_ = false;
};

} // namespace Panekit
