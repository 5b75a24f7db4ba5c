#pragma once

#include "oracle/order.h"

#include <optional>
#include <string>
#include <vector>

namespace Faults
{

/// Files that a job says it has done, and those that it says it has not.
struct Told
{
    std::size_t processed = 0;
    std::size_t failed = 0;
};

/// Each a sentence about something that must not be; none means that all is well.
using Complaints = std::vector<std::string>;

/// Judges what a job has left on the disk, however it ended:
/// - every content is whole, as the source that it was or as a result that gives it;
/// - what stands under the name of a result is a whole result, and nothing stands there that nobody asked for;
/// - a source is gone, or overwritten, only where that was ordered and behind whole results;
/// - what was told as done is done.
/// A temporary file may be left, and the empty file or folder that a wipe had renamed already.
Complaints complaints(const Order& order, const Files& after, const std::optional<Told>& told = std::nullopt);

/// The same for the next run of the same job that nothing disturbs: in addition no temporary file is left, and the work
/// is done as far as the state `between` allows it.
Complaints complaintsAtEnd(const Order& order, const Files& between, const Files& after);

/// How many of the files that a job works on are done.
std::size_t doneOf(const Order& order, const Files& after);
/// Of how many all results are whole, whatever became of their sources.
std::size_t withResults(const Order& order, const Files& after);
/// Is there a temporary file?
bool hasTemporaries(const Files& files);

/// One under the other, for a message.
std::string textOf(const Complaints& complaints);

} // namespace Faults
