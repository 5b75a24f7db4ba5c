#pragma once

#include <chrono>

namespace Benchmarks
{

/// How long processors have worked for this process.
std::chrono::nanoseconds processTime();

} // namespace Benchmarks
