#pragma once

#include "telemetry/i_event_tracker.h"

#include <cstdint>

namespace VaultCore
{
class Exception;
class IKey;
} // namespace VaultCore

namespace JobRunner
{

// What both encryptions report. Job thread.

/// Under the category of the plain encryption; nothing for a key that is neither symmetric nor public.
void trackKeyFileType(Halden::ZEL::Telemetry::IEventTracker& tracker, VaultCore::IKey& key);

void trackAlgorithmAndDestiny(Halden::ZEL::Telemetry::IEventTracker& tracker, const wchar_t* category,
                              std::uint32_t algorithm, std::uint32_t destiny);

/// Also tells the user, and returns when the message is read.
void reportKeyFileFailure(Halden::ZEL::Telemetry::IEventTracker& tracker, const VaultCore::Exception& failure);

} // namespace JobRunner
