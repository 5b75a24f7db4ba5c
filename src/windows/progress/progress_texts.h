#pragma once

#include <cstdint>
#include <optional>
#include <string>

// Texts of the progress display. Pure functions; the user's locale does not change them.

namespace JobRunner
{

/// "hh:mm:ss", hours not capped; "n/a" for `UnknownTime`.
std::wstring timeText(int seconds);
/// Kilobytes per second, cut to 32 bits.
std::wstring speedText(std::uint64_t bytesPerSecond);
/// Megabytes, cut to 32 bits; "n/a" for `UnknownBytes`.
std::wstring bytesText(std::uint64_t bytes);
/// The line over the file bar. `name` is shown as it stands.
std::wstring fileProgressText(const std::wstring& name, double percent, bool wiping);
/// The line over the total bar; "Total: n/a" for `UnknownPercent`.
std::wstring totalProgressText(double percent);
/// Title of a `ProgressOperation`; empty for values that have none.
std::wstring operationTitle(int operation);
/// The same, with a percent behind it when there is one.
std::wstring progressTitle(int operation, std::optional<int> percent);

} // namespace JobRunner
