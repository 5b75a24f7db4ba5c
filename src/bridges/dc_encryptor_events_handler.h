#pragma once

#include "bridges/events_handler.h"

namespace JobRunner
{

/// The handler of the double-click job's encryption: its progress bridge is a `DcdProgressHandler`.
class DcEncryptorEventsHandler final : public EventsHandler
{
public:
    /// Neither is owned.
    DcEncryptorEventsHandler(ProgressWindow* window, IGuiEvents* gui);
};

} // namespace JobRunner
