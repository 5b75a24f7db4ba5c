#pragma once

#include "linux/memory_disk.h"
#include "oracle/oracle.h"
#include "scenarios/sample_folder.h"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace Faults
{

using EndToEnd::Path;

/// What happens at one call of a run; see trap/trap.h. By default the calls are only counted.
struct Trapping
{
    std::string deed;
    long step = 0;
    int error = 0;
};

/// How a program ended.
struct Ended
{
    /// The exit code; 128 + n by signal n; -1 when it had not ended in time and was ended.
    int code = -1;
    /// The calls that the trap counted: name and path each.
    std::vector<std::string> calls;
    std::string shown;
    /// What it has reported of its files at the end of the job, if it came so far.
    std::optional<Told> told;
    /// From the first counted call to the last one.
    std::chrono::microseconds worked{0};
};

/// A place where a program works on files, with all it needs to answer its questions: a job file, a key file, lines for
/// its input.
class Workplace
{
public:
    Workplace();

    /// The folder that is trapped.
    Path files() const { return (disk_.isThere() ? disk_.path() : folder_.path()) / "files"; }
    Path keyFile() const { return folder_.path() / "tested.zelkey"; }
    /// The job file, for a list of entries below `files`.
    Path addJob(const std::string& kind, const std::vector<std::string>& entries, const std::string& fields) const;

    /// Runs a program to its end, with `input` in the place of its terminal. When `killedAfter` is there, it is ended
    /// from outside that time after its first counted call, if it still runs.
    Ended run(const std::vector<std::string>& command, const std::string& input, const Trapping& trapping = {},
              std::optional<std::chrono::microseconds> killedAfter = std::nullopt) const;

private:
    Path log() const { return folder_.path() / "calls"; }
    Path output() const { return folder_.path() / "output"; }
    std::vector<std::string> environment(const Trapping& trapping) const;

    EndToEnd::SampleFolder folder_;
    /// An ended process does not take with it what it has handed to the system, so no real disk is waited for.
    EndToEnd::MemoryDisk disk_;
};

} // namespace Faults
