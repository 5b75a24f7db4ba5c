#pragma once

#include "panekit/control_window.h"
#include "windows/drawing/gdiplus.h"

#include <functional>
#include <memory>

namespace Panekit
{

/// A small button with a picture, in a field. It is held down by the mouse, or by Space or Enter; however the hold
/// ends, its end is told, exactly once.
class IconButton final : public ControlWindow
{
public:
    static constexpr const wchar_t* ClassName = L"paneexpl7::edit::iconbutton";
    /// True when a hold begins, false when it ends. The button may be deleted by it.
    using Tell = std::function<void(bool held)>;

    /// A null picture leaves the button empty.
    IconButton(std::unique_ptr<Gdiplus::Bitmap> icon, Tell tell);
    ~IconButton() { close(); }

    SIZE contentSize(int width) override;
    /// Ends a hold; the same as letting the button go.
    void release();

private:
    enum class Holder
    {
        None,
        Mouse,
        Key
    };

    void paint(HDC dc, const RECT& client) override;
    LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    DWORD windowStyle() const override { return WS_TABSTOP; }
    void drawIcon(HDC dc, const RECT& client);
    SIZE iconSize() const;
    void onMouseDown();
    void onMouseMove(WPARAM buttons);
    bool onKeyDown(WPARAM key, LPARAM details);
    void hold(Holder holder);

    std::unique_ptr<Gdiplus::Bitmap> icon_;
    Tell tell_;
    Holder holder_ = Holder::None;
    WPARAM key_ = 0;
    bool hot_ = false;
};

} // namespace Panekit
