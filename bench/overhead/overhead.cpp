#include "common/measures.h"
#include "overhead/benched_job.h"
#include "overhead/display.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <thread>

namespace Benchmarks
{

namespace
{

using Fakes::EngineCallbacks;

constexpr int Files = 1000;
constexpr int ReportsOfAFile = 1000;
constexpr int Reports = Files * ReportsOfAFile;
constexpr std::uint64_t ReportSize = 64 * 1024;
constexpr std::uint64_t FileSize = ReportsOfAFile * ReportSize;
/// Larger than all that is reported, so that each report changes the numbers.
constexpr std::uint64_t TotalSize = 10 * Files * FileSize;
/// Between two files of the timed reports, so that the display draws many times while they come.
constexpr std::chrono::milliseconds Pause{2};
constexpr int RoundTrips = 10000;
constexpr int RoundTripsWithDisplay = 1000;

std::FILE* results = nullptr;

void expect(bool condition, const char* failure)
{
    if (condition)
        return;
    std::fprintf(stderr, "benchmark: %s\n", failure);
    std::_Exit(1);
}

void report(const EngineCallbacks& engine, std::uint64_t done)
{
    expect(engine.progress->OnFileProgress(done, FileSize) != 0, "the job was cancelled");
}

/// Calls `report` for each step of one file.
template <class Report> void workOnFile(const EngineCallbacks& engine, Report report)
{
    static int number = 0;
    engine.overall->OnFileStarted((L"letters/of the year/letter " + std::to_wstring(++number)).c_str());
    for (std::uint64_t step = 1; step <= ReportsOfAFile; ++step)
        report(step * ReportSize);
    engine.overall->OnFileFinished(nullptr, nullptr, 0);
}

Measures timeReports(const EngineCallbacks& engine)
{
    Measures measures(Reports);
    for (int file = 0; file < Files; ++file)
    {
        workOnFile(engine, [&](std::uint64_t done) { measures.time([&] { report(engine, done); }); });
        std::this_thread::sleep_for(Pause);
    }
    return measures;
}

void measureRate(const EngineCallbacks& engine)
{
    const auto start = Clock::now();
    for (int file = 0; file < Files; ++file)
        workOnFile(engine, [&](std::uint64_t done) { report(engine, done); });
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    printRow(results, "Reports per second", std::to_string(static_cast<long>(Reports / seconds)));
}

void measureHangingDisplay(const EngineCallbacks& engine)
{
    const HangingDisplay display([&] { workOnFile(engine, [&](std::uint64_t done) { report(engine, done); }); });
    const Measures measures = timeReports(engine);
    expect(display.hangs(), "the display worked again before the last report");
    printRows(results, "Report while the display hangs", measures);
}

void measureRoundTrips(const EngineCallbacks& engine, const std::string& name, int count)
{
    Measures measures(static_cast<std::size_t>(count));
    for (int trip = 0; trip < count; ++trip)
    {
        int answer = 0;
        measures.time([&] { answer = engine.conflict->OnFileError(L"letter", L"", L"Access is denied."); });
        expect(answer == VaultCore::FileErrorSkip, "the first thread did not answer");
    }
    printRows(results, name, measures);
}

void measureClock()
{
    Measures measures(Reports);
    for (int reading = 0; reading < Reports; ++reading)
        measures.time([] {});
    printRows(results, "Clock", measures);
}

void work(const EngineCallbacks& engine)
{
    measureClock();
    measureRoundTrips(engine, "Round trip", RoundTrips);
    engine.overall->OnOperationStarted();
    engine.fileList->OnFileListBuilt(0, TotalSize);
    // The first reports bring the display up.
    workOnFile(engine, [&](std::uint64_t done) { report(engine, done); });
    std::this_thread::sleep_for(std::chrono::seconds(1));
    printRows(results, "Report", timeReports(engine));
    measureRate(engine);
    measureHangingDisplay(engine);
    measureRoundTrips(engine, "Round trip with the progress display open", RoundTripsWithDisplay);
    engine.overall->OnOperationFinished();
}

int measure(std::FILE* output)
{
    results = output;
    runJob(work);
    return 0;
}

} // namespace

} // namespace Benchmarks

int main()
{
    return Benchmarks::runWithDisplay(Benchmarks::measure);
}
