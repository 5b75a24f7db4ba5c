#include "panekit/density.h"

#include "windows/drawing/gdi_handles.h"

namespace Panekit
{

namespace
{
int pretended = 0;
}

int densityOf(HWND window)
{
    if (pretended > 0)
        return pretended;
    const Drawing::WindowDc dc(window);
    return GetDeviceCaps(dc.get(), LOGPIXELSX);
}

void pretendDensity(int dotsPerInch)
{
    pretended = dotsPerInch;
}

} // namespace Panekit
