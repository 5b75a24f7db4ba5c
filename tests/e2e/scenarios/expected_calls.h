#pragma once

#include <string>
#include <vector>

namespace EndToEnd
{

using Lines = std::vector<std::string>;

/// What the statistics client is told when the process reports these events, one a line, such as
/// "TrackView(jobrunner/wipe, Wipe Thread (JobRunner))", "TrackViewEvent(action, label, none)" and
/// "TrackEvent(category, action, label, 5)": how it is made, and each event with the version ahead of it and under the
/// view that is then current.
Lines expectedCalls(const std::string& events);

/// The calls that a crash of the process leaves, but for the address, which is "?".
Lines expectedCrashCalls(const std::string& exceptionName);
/// The same calls as they were made, with "?" in place of the crash's address, which has to be a number other than 0.
Lines withoutCrashAddress(Lines calls);

} // namespace EndToEnd
