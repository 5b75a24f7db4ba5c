#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Platform
{

/// A process as the system's table of processes (/proc) shows it.
struct ProcessRecord
{
    std::uint32_t id = 0;
    std::uint32_t parent = 0;
    std::uint64_t started = 0; ///< tells it from another process that has the same id later; in ticks since the start
    bool hasEnded = false;     ///< is only kept until its parent has taken notice
    std::string name;          ///< of its program, at most 15 bytes
};

/// All processes by ascending ids, also the ended ones.
std::vector<ProcessRecord> processRecords();
/// Nothing when there is none.
std::optional<ProcessRecord> processRecord(std::uint32_t id);
/// From the text of /proc/ID/stat; nothing when it is none.
std::optional<ProcessRecord> parseProcessRecord(const std::string& text);

/// The ids of its threads, ascending.
std::vector<std::uint32_t> threadsOf(std::uint32_t process);
/// Full path of the program that it runs; empty for a process that may not be looked into.
std::string programOf(std::uint32_t process);
/// Now, as `ProcessRecord::started` counts.
std::uint64_t processTicks();

/// The entries of a folder that are numbers, ascending.
std::vector<std::uint32_t> numbersIn(const std::string& folder);

} // namespace Platform
