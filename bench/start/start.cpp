#include "scenarios/sample_folder.h"
#include "start/measured_start.h"

#include <exception>

namespace Benchmarks
{

namespace
{

constexpr int Runs = 21;
constexpr int FilesOfAJob = 3;

MeasuredStart runOnce()
{
    const EndToEnd::SampleFolder folder;
    const auto files = folder.addFiles(FilesOfAJob);
    return measureStart(EndToEnd::programUnderTest(), folder.addDeleteJob(files), files.front());
}

void run()
{
    Measures toQuestion(Runs);
    Measures toWork(Runs);
    Measures sum(Runs);
    runOnce(); // brings the program and its modules into memory
    for (int number = 0; number < Runs; ++number)
    {
        const MeasuredStart start = runOnce();
        toQuestion.add(start.toQuestion);
        toWork.add(start.toWork);
        sum.add(start.toQuestion + start.toWork);
    }
    printRow(stdout, "Process start to question, median", text(toQuestion.median()));
    printRow(stdout, "Answer to first file gone, median", text(toWork.median()));
    printRow(stdout, "Process start to engine at work (sum), median", text(sum.median()));
    printRow(stdout, "Process start to engine at work (sum), longest", text(sum.longest()));
}

} // namespace

} // namespace Benchmarks

int main()
{
    try
    {
        Benchmarks::run();
        return 0;
    }
    catch (const std::exception& failure)
    {
        std::fprintf(stderr, "benchmark: %s\n", failure.what());
        return 1;
    }
}
