#include "windows/framework/win32/scale.h"

#include "windows/drawing/gdi_handles.h"

namespace JobRunner
{

int scaleAt(int dpi, int value)
{
    constexpr float PlainDpi = 96.0F;
    return static_cast<int>(static_cast<float>(dpi) / PlainDpi * static_cast<float>(value));
}

int scaleByDpi(HWND window, int value)
{
    const Drawing::WindowDc dc(window);
    return scaleAt(GetDeviceCaps(dc.get(), LOGPIXELSX), value);
}

} // namespace JobRunner
