#pragma once

#include <windows.h>

namespace Drawing
{

/// Owns one GDI object: a bitmap, font, pen or brush.
template <class Handle> class GdiObject
{
public:
    GdiObject() = default;
    explicit GdiObject(Handle handle) : handle_(handle) {}
    ~GdiObject() { reset(); }
    GdiObject(GdiObject&& other) noexcept : handle_(other.handle_) { other.handle_ = nullptr; }
    GdiObject& operator=(GdiObject&& other) noexcept
    {
        if (this == &other)
            return *this;
        reset(other.handle_);
        other.handle_ = nullptr;
        return *this;
    }

    Handle get() const { return handle_; }
    explicit operator bool() const { return handle_ != nullptr; }
    void reset(Handle handle = nullptr)
    {
        if (handle_)
            DeleteObject(handle_);
        handle_ = handle;
    }

private:
    Handle handle_ = nullptr;
};

/// Selects an object into a device context and puts the old one back.
class Selected
{
public:
    Selected(HDC dc, HGDIOBJ object) : dc_(dc), old_(SelectObject(dc, object)) {}
    ~Selected()
    {
        if (old_)
            SelectObject(dc_, old_);
    }
    Selected(const Selected&) = delete;
    Selected& operator=(const Selected&) = delete;

private:
    HDC dc_;
    HGDIOBJ old_;
};

/// The device context of a window, or of the screen for null.
class WindowDc
{
public:
    explicit WindowDc(HWND window) : window_(window), dc_(GetDC(window)) {}
    ~WindowDc()
    {
        if (dc_)
            ReleaseDC(window_, dc_);
    }
    WindowDc(const WindowDc&) = delete;
    WindowDc& operator=(const WindowDc&) = delete;

    HDC get() const { return dc_; }

private:
    HWND window_;
    HDC dc_;
};

} // namespace Drawing
