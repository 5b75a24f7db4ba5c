#include "common/measures.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace Benchmarks
{

Measures::Measures(std::size_t expected)
{
    // Written once, so that the system has given the memory before the first measure.
    durations_.assign(expected, Clock::duration(1));
    durations_.clear();
}

Clock::duration Measures::percentile(double part) const
{
    const auto rank = static_cast<std::size_t>(std::ceil(part * static_cast<double>(durations_.size())));
    std::vector<Clock::duration> sorted = durations_;
    const auto place = sorted.begin() + static_cast<std::ptrdiff_t>(std::max<std::size_t>(rank, 1) - 1);
    std::nth_element(sorted.begin(), place, sorted.end());
    return *place;
}

std::string text(Clock::duration duration)
{
    const double microseconds = std::chrono::duration<double, std::micro>(duration).count();
    const bool large = microseconds >= 1000;
    const double number = large ? microseconds / 1000 : microseconds;
    std::array<char, 40> written{};
    std::snprintf(written.data(), written.size(), "%.*f %s",
                  number < 10    ? 2
                  : number < 100 ? 1
                                 : 0,
                  number, large ? "ms" : "µs");
    return written.data();
}

void printRow(std::FILE* results, const std::string& name, const std::string& value)
{
    std::fprintf(results, "%s\t%s\n", name.c_str(), value.c_str());
    std::fflush(results);
}

void printRows(std::FILE* results, const std::string& name, const Measures& measures)
{
    printRow(results, name + ", p50", text(measures.median()));
    printRow(results, name + ", p99", text(measures.percentile(0.99)));
    printRow(results, name + ", longest", text(measures.longest()));
}

} // namespace Benchmarks
