#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// The files that this module reads and writes. Paths may be longer than the classic limit of the system's calls.
// Nothing here throws but std::bad_alloc.

namespace ZelPlatform
{

/// Content of a plain file of at most `limit` bytes. Nothing when it is missing, larger, not a plain file, or when
/// any part of it cannot be read.
std::optional<std::string> readFile(const std::wstring& path, std::size_t limit);

/// Puts a file that only the user may read in the place of `path`, as a whole or not at all, and creates the folders
/// on the way. False when it could not; then the former file is still there.
bool replacePrivateFile(const std::wstring& path, std::string_view content);

/// File of the user's default comment; empty when the user has no folder for settings.
std::wstring userCommentFile();

} // namespace ZelPlatform
