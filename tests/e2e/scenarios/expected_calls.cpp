#include "scenarios/expected_calls.h"

#include <sstream>

namespace EndToEnd
{

namespace
{

const std::string Created =
    "CreateClient(1, https://statistics.halden.example/visitors/visitors.php, https://statistics.halden.example/, "
    "winzel)";
const std::string Version = "SetDimension(1, 6.13)";
const std::string CrashAddress = "SendViewEvent(jobrunner, crash_address, Crash Address, ";

/// What stands behind "NAME(" in a line, when it is an event of that name.
bool isEvent(const std::string& line, const std::string& name, std::string& arguments)
{
    if (!line.starts_with(name + "("))
        return false;
    arguments = line.substr(name.size() + 1);
    return true;
}

} // namespace

Lines expectedCalls(const std::string& events)
{
    Lines calls{Created};
    std::string view;
    std::istringstream lines(events);
    for (std::string line, arguments; std::getline(lines, line);)
    {
        if (line.empty())
            continue;
        calls.push_back(Version);
        if (isEvent(line, "TrackView", arguments))
        {
            view = arguments.substr(0, arguments.find(", "));
            calls.push_back("SendView(" + arguments);
        }
        else if (isEvent(line, "TrackViewEvent", arguments))
            calls.push_back("SendViewEvent(" + view + ", " + arguments);
        else if (isEvent(line, "TrackEvent", arguments))
            calls.push_back("SendEvent(" + view + ", " + arguments);
    }
    return calls;
}

Lines expectedCrashCalls(const std::string& exceptionName)
{
    Lines calls = expectedCalls(R"(
TrackView(jobrunner, App Crash)
TrackViewEvent(crash_module, Crash in Module, none)
TrackViewEvent()" + exceptionName +
                                R"(, Crash Code, none)
TrackViewEvent(crash_address, Crash Address, ?)
TrackEvent(winzel crash statistics, jobrunner, , none)
)");
    calls.erase(calls.begin());
    return calls;
}

Lines withoutCrashAddress(Lines calls)
{
    for (std::string& call : calls)
    {
        const std::string value = call.starts_with(CrashAddress) ? call.substr(CrashAddress.size()) : "";
        if (value.find_first_of("123456789") <= 1 && value.find_first_not_of("-0123456789)") == std::string::npos)
            call = CrashAddress + "?)";
    }
    return calls;
}

} // namespace EndToEnd
