#pragma once

#include <string>

namespace Platform
{

/// The content of a file. Empty where it cannot be read to its end, such as a folder or the record of a process that
/// has ended in between: a stream of the library would throw there. Safe on any thread.
std::string textOfFile(const std::string& path);

} // namespace Platform
