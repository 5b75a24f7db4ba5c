#pragma once

#include <string>

namespace Platform
{
class Terminal;
}

namespace JobRunner
{

/// Asks for the path of a key file until there is such a file, and gives its full path. A name without an extension
/// that is no file may leave the ".zelkey" out. Empty when the user gives none.
std::wstring askForKeyFile(Platform::Terminal& terminal);

} // namespace JobRunner
