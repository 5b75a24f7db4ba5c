#pragma once

#include <cstdint>
#include <string>

namespace Halden::ZEL::Telemetry
{

/// Name of an exception code in the crash reports; "UNKNOWN_EXCEPTION" for a code outside the table.
std::wstring ExceptionCodeName(std::uint32_t code);

} // namespace Halden::ZEL::Telemetry
