#pragma once

#include "statistics/recorder.h"

#include <chrono>
#include <string>

namespace StatisticsModule
{

/// The call as one line of the journal with its line break, in UTF-8: an array of JSON with the time in UTC, the
/// process, the operation and its arguments. An absent value is null. All that could break a line is escaped.
std::string journalLine(std::chrono::system_clock::time_point time, std::uint32_t process, const Call& call);

} // namespace StatisticsModule
