#pragma once

#include "bridges/events_handler.h"

namespace JobRunner
{

/// The handler of the double-click job's wipe: its progress bridge is a `DcdProgressHandler`.
class DcDeleterEventsHandler final : public EventsHandler
{
public:
    /// Neither is owned.
    DcDeleterEventsHandler(ProgressWindow* window, IGuiEvents* gui);
};

} // namespace JobRunner
