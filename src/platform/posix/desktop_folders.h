#pragma once

#include <string>
#include <vector>

namespace Platform
{

/// Where the desktop keeps its data and its settings, the user's own first.
std::vector<std::string> desktopDataFolders();
std::vector<std::string> desktopSettingFolders();

/// The .desktop file of an id, which the folders of the user and of the system are searched for; empty if there is
/// none. A '-' of the id may stand for a folder.
std::string desktopFileOf(const std::string& id);

/// Id of the application that the user, or the system for him, has chosen for a kind of file ("text/plain"); empty if
/// none was chosen or none of the chosen is there.
std::string chosenApplicationOf(const std::string& kind);

} // namespace Platform
