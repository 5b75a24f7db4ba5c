#include "watcher/scenarios.h"

#include "watcher/common_scenarios.h"

namespace Benchmarks
{

std::vector<Scenario> scenarios()
{
    return CommonScenarios;
}

EndToEnd::WatchedDocument::Result play(const Scenario& scenario, EndToEnd::WatchedDocument& document)
{
    return document.open(scenario.arguments);
}

} // namespace Benchmarks
