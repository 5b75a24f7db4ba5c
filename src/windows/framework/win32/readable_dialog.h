#pragma once

// For the tests of dialogs: that a user can read all of it.

#include "windows/drawing/gdi_handles.h"
#include "windows/drawing/memory_buffer.h"
#include "windows/framework/win32/open_dialog.h"

#include <gtest/gtest.h>

namespace JobRunner
{

/// What can be seen lies inside the dialog and nothing lies over anything else.
inline void expectTidy(const OpenDialog& dialog)
{
    std::vector<ShownControl> seen = dialog.controls();
    std::erase_if(seen, [](const ShownControl& control) { return !control.visible; });
    const RECT client = dialog.client();
    for (std::size_t i = 0; i < seen.size(); ++i)
    {
        RECT common{};
        for (std::size_t j = i + 1; j < seen.size(); ++j)
            EXPECT_FALSE(IntersectRect(&common, &seen[i].place, &seen[j].place)) << i << " and " << j;
        UnionRect(&common, &client, &seen[i].place);
        EXPECT_TRUE(EqualRect(&common, &client)) << i;
    }
}

/// Width of a line in the font of the dialog.
inline LONG widthOfLine(const OpenDialog& dialog, const std::wstring& text)
{
    const HDC dc = GetDC(dialog.window());
    const HGDIOBJ before = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(dialog.window(), WM_GETFONT, 0, 0)));
    SIZE size{};
    GetTextExtentPoint32W(dc, text.c_str(), static_cast<int>(text.size()), &size);
    SelectObject(dc, before);
    ReleaseDC(dialog.window(), dc);
    return size.cx;
}

/// No text of one line is wider than its control. The header and the fields, which have room of their own, aside.
inline void expectNothingCutOff(const OpenDialog& dialog)
{
    for (const ShownControl& control : dialog.controls())
    {
        const bool line = control.kind == L"Button" || control.kind == ControlClass::TextWithLinks ||
                          control.kind == ControlClass::TextWithPopupMenu;
        if (!control.visible || !line)
            continue;
        EXPECT_LE(widthOfLine(dialog, control.text), control.place.right - control.place.left)
            << std::string(control.text.begin(), control.text.end());
    }
}

/// A place in dialog units, as a template gives it. The size is turned to pixels by itself, not the far corner.
inline RECT fromUnits(HWND dialog, LONG left, LONG top, LONG width, LONG height)
{
    RECT place{left, top, width, height};
    MapDialogRect(dialog, &place);
    return {place.left, place.top, place.left + place.right, place.top + place.bottom};
}

/// Centred across, as every dialog is that opens without an owner. Its height may have changed since.
inline void expectInTheMiddleAcross(const OpenDialog& dialog)
{
    RECT area{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    RECT place{};
    GetWindowRect(dialog.window(), &place);
    EXPECT_NEAR(place.left + place.right, area.left + area.right, 1);
}

/// The dialog paints a white panel above its grey band by itself, and nobody has to erase behind it.
inline void expectPanelAboveBand(const OpenDialog& dialog)
{
    const RECT client = dialog.client();
    const Drawing::WindowDc dc(dialog.window());
    Drawing::MemoryBuffer buffer;
    ASSERT_TRUE(buffer.create(dc.get(), static_cast<int>(client.right), static_cast<int>(client.bottom)));
    const auto target = reinterpret_cast<WPARAM>(buffer.dc());
    EXPECT_EQ(SendMessageW(dialog.window(), WM_ERASEBKGND, target, 0), 1);
    EXPECT_EQ(GetPixel(buffer.dc(), 0, 0), RGB(255, 255, 255));
    EXPECT_EQ(GetPixel(buffer.dc(), 0, static_cast<int>(client.bottom) - 1), RGB(240, 240, 240));
}

} // namespace JobRunner
