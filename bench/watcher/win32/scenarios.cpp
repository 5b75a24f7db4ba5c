#include "watcher/scenarios.h"

#include "applications/association.h"
#include "watcher/common_scenarios.h"
#include "windows/running_program.h"

#include <optional>

namespace Benchmarks
{

std::vector<Scenario> scenarios()
{
    std::vector<Scenario> all = CommonScenarios;
    all.push_back({"Running instance, until its window closes", L"single", "closed", true, L"--open 2000"});
    all.push_back({"Running instance that comes to the front, until it ends", L"single", "ends", true,
                   L"--front --open 1500 --stay 1000"});
    return all;
}

EndToEnd::WatchedDocument::Result play(const Scenario& scenario, EndToEnd::WatchedDocument& document)
{
    std::optional<EndToEnd::RunningProgram> running;
    if (!scenario.running.empty())
    {
        running.emplace(Applications::testApplication(), L"single --serve " + scenario.running + document.logOption());
        document.noted("serves");
    }
    return document.open(scenario.arguments);
}

} // namespace Benchmarks
