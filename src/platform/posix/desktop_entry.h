#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace Platform
{

/// An application as it is installed on the desktop: what its .desktop file says of it. Text is UTF-8.
struct DesktopEntry
{
    std::string file; ///< the .desktop file itself
    std::string name;
    std::string icon;
    std::string command; ///< "Exec", with quotes and field codes
    std::string folder;  ///< "Path", to work in; may be empty
};

/// The values of one group of a file of the desktop, by their keys; `group` without its brackets. The first of several
/// values of a key counts.
std::map<std::string, std::string> valuesOfGroup(const std::string& text, const std::string& group);

/// Reads the text of a .desktop file. Nothing when it is that of no application, or of one that was removed.
std::optional<DesktopEntry> parseDesktopEntry(const std::string& text);

/// Program and arguments that open `document`, a full path. The path arrives as it is, whatever is in it: no shell
/// reads it. A command that names no place for a document gets it as the last argument. Nothing when the command cannot
/// be understood.
std::optional<std::vector<std::string>> commandFor(const DesktopEntry& entry, const std::string& document);

} // namespace Platform
