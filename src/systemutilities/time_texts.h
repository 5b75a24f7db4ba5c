#pragma once

#include <cstdint>
#include <string>

// Times as texts. Any thread.

namespace Halden::SystemUtilities
{

/// "1h 0m 0s". Hours that are 0 are left out, minutes only with them. Of a negative time each part has its sign.
std::wstring FormatSeconds(std::int32_t seconds);
/// A time in seconds since 1970: the user's short date, a blank and the user's time. A time that the system has no
/// fields for has no date.
std::wstring FormatDateTime(std::int64_t time);

} // namespace Halden::SystemUtilities
