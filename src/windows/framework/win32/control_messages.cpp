#include "windows/framework/win32/control_messages.h"

#include "interfaces/panekit/controls.h"

namespace JobRunner
{

const ControlMessages& controlMessages()
{
    static const ControlMessages messages{
        RegisterWindowMessageW(ControlMessage::GetBackgroundInfo),
        RegisterWindowMessageW(ControlMessage::UpdateBackground),
        RegisterWindowMessageW(ControlMessage::ItemChanged),
        RegisterWindowMessageW(ControlMessage::ButtonClicked),
        RegisterWindowMessageW(ControlMessage::ButtonPressed),
        RegisterWindowMessageW(ControlMessage::TextChanged),
        RegisterWindowMessageW(ControlMessage::HyperlinkClicked),
        RegisterWindowMessageW(ControlMessage::LinkMouseMove),
        RegisterWindowMessageW(ControlMessage::LinkMouseLeave),
        RegisterWindowMessageW(ControlMessage::LinkButtonDown),
        RegisterWindowMessageW(ControlMessage::LinkButtonUp),
        RegisterWindowMessageW(ControlMessage::SelectionChanged),
    };
    return messages;
}

} // namespace JobRunner
