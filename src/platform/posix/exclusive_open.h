#pragma once

#include "platform/posix/descriptor.h"

#include <cstdint>
#include <string>

namespace Platform
{

/// A file that was opened, or why it was not.
struct OpenResult
{
    Descriptor descriptor;
    std::uint32_t error = 0; ///< a number of Windows; 0 when it is open
};

/// Opens a file for reading. Folders are refused.
OpenResult openForReading(const std::string& path);
/// The same when nobody else has the file open, this process included; else the error of a sharing violation. Others
/// may open it from then on. Any thread.
OpenResult openAlone(const std::string& path);

/// Whether anybody has the open file behind `descriptor` open through another descriptor, as far as this process may
/// look into others. Slow: it goes through the open files of all processes.
bool isListedAsOpen(int descriptor);

} // namespace Platform
