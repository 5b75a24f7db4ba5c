#pragma once

#include <string>
#include <vector>

namespace Platform
{

/// Text that is safe to show: line breaks stay, every other control character, direction override and byte that is no
/// text becomes '?', so that a file name cannot send commands to the terminal.
std::wstring displayText(const std::wstring& text);
/// The same for one line: a line break becomes '?' too.
std::wstring displayLine(const std::wstring& text);
/// The start of a line that fits into `columns` columns of the terminal.
std::wstring fitColumns(const std::wstring& line, int columns);

} // namespace Platform
