#pragma once

#include <cstdint>
#include <string>

namespace Applications
{

/// Writes down now that something happened, as "WHAT N"; nothing when there is no log.
void note(const std::wstring& log, const std::string& what);

} // namespace Applications
