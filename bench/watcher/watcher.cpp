#include "common/measures.h"
#include "watcher/process_time.h"
#include "watcher/scenarios.h"

#include <cstdlib>
#include <thread>

namespace Benchmarks
{

namespace
{

using EndToEnd::WatchedDocument;
using std::chrono::milliseconds;

constexpr int DefaultRounds = 20;
/// The watcher looks at the folder only once it has waited half a second for a window to come to the front.
constexpr milliseconds CalmTime{1000};
constexpr milliseconds MeasuredTime{4000};

void finish(const Scenario& scenario, const WatchedDocument& document)
{
    // An application that still runs would be seen by the next watch.
    if (scenario.arguments.starts_with(L"hold"))
        document.noted("ends");
}

void measureDelays(const Scenario& scenario, int rounds)
{
    Measures delays(static_cast<std::size_t>(rounds));
    for (int round = 0; round < rounds; ++round)
    {
        WatchedDocument document;
        if (!scenario.alone)
            document.addNeighbour("another letter.txt");
        const WatchedDocument::Result result = play(scenario, document);
        if (!result.opened || !document.isNoted(scenario.end))
        {
            std::fprintf(stderr, "benchmark: %s: the watcher did not wait\n", scenario.name.c_str());
            std::exit(1);
        }
        delays.add(milliseconds(result.returned - document.noted(scenario.end)));
        finish(scenario, document);
    }
    printRow(stdout, scenario.name,
             text(delays.percentile(0)) + " | " + text(delays.median()) + " | " + text(delays.longest()));
}

/// Part of one processor that this process uses while it waits for a document that is held.
void measureLoad(const std::string& name, bool folderChanges)
{
    WatchedDocument document;
    double part = 0;
    std::thread measuring(
        [&]
        {
            document.noted("holds");
            std::this_thread::sleep_for(CalmTime);
            if (folderChanges)
                document.addNeighbour("changed.tmp");
            std::this_thread::sleep_for(CalmTime);
            const auto start = Clock::now();
            const auto used = processTime();
            std::this_thread::sleep_for(MeasuredTime);
            part = std::chrono::duration<double>(processTime() - used) /
                   std::chrono::duration<double>(Clock::now() - start);
        });
    document.open(L"hold 7000");
    measuring.join();
    char percent[32] = {};
    std::snprintf(percent, sizeof percent, "%.1f %%", 100 * part);
    printRow(stdout, name, percent);
}

} // namespace

} // namespace Benchmarks

int main(int count, char** arguments)
{
    const int rounds = count > 1 ? std::atoi(arguments[1]) : Benchmarks::DefaultRounds;
    Benchmarks::measureLoad("One processor, while nothing in the folder changes", false);
    Benchmarks::measureLoad("One processor, once something has changed", true);
    if (rounds < 1)
        return 0;
    for (const auto& scenario : Benchmarks::scenarios())
        Benchmarks::measureDelays(scenario, rounds);
    return 0;
}
