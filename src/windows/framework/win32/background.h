#pragma once

#include "interfaces/panekit/controls.h"
#include "windows/drawing/memory_buffer.h"

#include <vector>

#include <windows.h>

namespace JobRunner
{

/// The white panel above a grey button band, and the buffer that the text controls blend with. Thread of the dialog.
class DialogBackground
{
public:
    /// Makes the buffer anew: the size of the client area, white.
    void prepare(HWND dialog);
    void free();
    /// Paints the dialog and hands the buffer to each control that takes one; null entries are skipped.
    void paint(HWND dialog, HDC dc, const std::vector<ICustomControl*>& controls);

private:
    Drawing::MemoryBuffer buffer_;
};

} // namespace JobRunner
