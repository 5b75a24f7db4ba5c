#pragma once

#include "oracle/full_run.h"
#include "oracle/order.h"
#include "posix/trapped_program.h"

#include <string>
#include <vector>

namespace Faults
{

/// A job of the program under test.
struct Scenario
{
    std::string name;
    Order order;
    /// Of the job file.
    std::string kind;
    std::string fields;

    /// Runs it. What goes wrong is answered with `answer`: t, s or a.
    Ended run(const Workplace& place, const Trapping& trapping = {}, char answer = 's',
              std::optional<std::chrono::microseconds> killedAfter = std::nullopt) const;
};

/// Every kind of job with every fate of its files.
inline constexpr const char* ScenarioNames[] = {
    "encryptAndKeep", "encryptAndDelete", "encryptAndWipe", "packAndKeep",     "packAndDelete", "packAndWipe",
    "decryptAndKeep", "decryptAndDelete", "unpackAndKeep",  "unpackAndDelete", "delete",        "wipe",
    "doubleClick"};
/// The one of a name. The first call makes them all, by runs of the program.
const Scenario& scenario(const std::string& name);

} // namespace Faults
