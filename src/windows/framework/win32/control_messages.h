#pragma once

#include <windows.h>

namespace JobRunner
{

/// Numbers of the messages that the custom controls send to their dialog.
struct ControlMessages
{
    UINT getBackgroundInfo;
    UINT updateBackground;
    UINT itemChanged;
    UINT buttonClicked;
    UINT buttonPressed;
    UINT textChanged;
    UINT hyperlinkClicked;
    UINT linkMouseMove;
    UINT linkMouseLeave;
    UINT linkButtonDown;
    UINT linkButtonUp;
    UINT selectionChanged;
};

/// Registered once, for all dialogs of the process.
const ControlMessages& controlMessages();

} // namespace JobRunner
