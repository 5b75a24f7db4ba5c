#include "panekit/field_colours.h"

namespace Panekit
{

FieldColours fieldColours(bool highContrast)
{
    if (highContrast)
        return {GetSysColor(COLOR_WINDOWTEXT), GetSysColor(COLOR_HIGHLIGHT), GetSysColor(COLOR_WINDOW),
                GetSysColor(COLOR_HIGHLIGHT)};
    return {RGB(160, 168, 178), RGB(0, 103, 184), RGB(226, 240, 252), RGB(190, 220, 246)};
}

FieldColours fieldColours()
{
    HIGHCONTRASTW setting{};
    setting.cbSize = sizeof setting;
    const bool known = SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof setting, &setting, 0) != FALSE;
    return fieldColours(known && (setting.dwFlags & HCF_HIGHCONTRASTON) != 0);
}

} // namespace Panekit
