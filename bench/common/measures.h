#pragma once

#include <chrono>
#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

namespace Benchmarks
{

using Clock = std::chrono::steady_clock;

/// How long an operation took, each time that it was done.
class Measures
{
public:
    /// Room for so many, so that adding one costs the same each time.
    explicit Measures(std::size_t expected);

    void add(Clock::duration duration) { durations_.push_back(duration); }
    template <class Operation> void time(Operation&& operation)
    {
        const auto start = Clock::now();
        operation();
        add(Clock::now() - start);
    }

    /// The duration that this part of all, from 0 to 1, did not exceed. Not of an empty collection.
    Clock::duration percentile(double part) const;
    Clock::duration median() const { return percentile(0.5); }
    Clock::duration longest() const { return percentile(1); }

private:
    std::vector<Clock::duration> durations_;
};

/// A duration in a unit that suits it.
std::string text(Clock::duration duration);

/// One row of the results: its name, a tabulator, the value.
void printRow(std::FILE* results, const std::string& name, const std::string& value);
/// Three rows: p50, p99 and the longest.
void printRows(std::FILE* results, const std::string& name, const Measures& measures);

} // namespace Benchmarks
