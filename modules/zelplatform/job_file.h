#pragma once

#include "zelplatform/job_description.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace ZelPlatform
{

inline constexpr std::size_t MaximumJobFileBytes = std::size_t{64} * 1024 * 1024;
/// Objects and arrays inside each other, the outermost object counted.
inline constexpr int MaximumJobFileNesting = 32;

/// Reads the text of a job file, see docs/job-file.md. Nothing when the text is not a job file; then no part of it
/// is used. Throws nothing but std::bad_alloc. Any thread.
std::optional<JobDescription> parseJobFile(std::string_view text);

} // namespace ZelPlatform
