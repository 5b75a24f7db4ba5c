#pragma once

#include "platform/crashes.h"

#include <string>

namespace Halden::ZEL::Telemetry
{

/// From now on an exception that nobody handles, on any thread, is reported and told to the user, and ends the process
/// with its code. `tag` names the module in the report and is the caption of the message. Once, on the first thread.
void InstallCrashFilter(const std::wstring& tag);

/// The filter: reports the crash through the process-wide tracker, if there is one, shows a message box until the user
/// closes it, and gives `ExecuteHandler`. Nothing is saved and nothing is cleaned up. Intended: nothing guards it, so
/// an exception of its own, as when the user's choice cannot be read, is a second one that nobody handles.
std::int32_t CrashFilter(const Platform::ExceptionRecord& exception);

} // namespace Halden::ZEL::Telemetry
