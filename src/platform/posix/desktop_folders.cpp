#include "platform/posix/desktop_folders.h"

#include "platform/posix/desktop_entry.h"
#include "platform/posix/text_of_file.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <sstream>

namespace Platform
{

namespace
{

constexpr char Applications[] = "/applications";
constexpr char ChoiceList[] = "mimeapps.list";

std::string valueOf(const char* variable, const std::string& otherwise)
{
    const char* const value = std::getenv(variable);
    return value && *value ? value : otherwise;
}

std::vector<std::string> parts(const std::string& text, char separator)
{
    std::vector<std::string> result;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);)
        if (!part.empty())
            result.push_back(part);
    return result;
}

/// A relative one counts as unset: it would let whoever can write the working folder choose the applications.
std::string folderOf(const char* variable, const std::string& otherwise)
{
    const std::string folder = valueOf(variable, otherwise);
    return folder.starts_with('/') ? folder : otherwise;
}

std::vector<std::string> folders(const char* own, const char* ownBelowHome, const char* others, const char* usualOthers)
{
    std::vector<std::string> result;
    const std::string home = folderOf("HOME", "");
    if (const std::string folder = folderOf(own, home.empty() ? home : home + ownBelowHome); !folder.empty())
        result.push_back(folder);
    for (const std::string& folder : parts(valueOf(others, usualOthers), ':'))
        if (folder.starts_with('/'))
            result.push_back(folder);
    return result;
}

std::string lowerCase(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char character) { return static_cast<char>(std::tolower(character)); });
    return text;
}

/// The lists in which choices are kept, in the order in which they count: those of the user's desktop before those of
/// any desktop.
std::vector<std::string> choiceLists()
{
    std::vector<std::string> places = desktopSettingFolders();
    for (const std::string& folder : desktopDataFolders())
        places.push_back(folder + Applications);
    std::vector<std::string> lists;
    for (const std::string& place : places)
    {
        for (const std::string& desktop : parts(valueOf("XDG_CURRENT_DESKTOP", ""), ':'))
            lists.push_back(place + '/' + lowerCase(desktop) + '-' + ChoiceList);
        lists.push_back(place + '/' + ChoiceList);
    }
    return lists;
}

} // namespace

std::vector<std::string> desktopDataFolders()
{
    return folders("XDG_DATA_HOME", "/.local/share", "XDG_DATA_DIRS", "/usr/local/share:/usr/share");
}

std::vector<std::string> desktopSettingFolders()
{
    return folders("XDG_CONFIG_HOME", "/.config", "XDG_CONFIG_DIRS", "/etc/xdg");
}

std::string desktopFileOf(const std::string& id)
{
    // A dash may stand for a folder, so that dots could lead out of it.
    if (id.empty() || id.starts_with('.') || id.find('/') != std::string::npos || id.find("-.") != std::string::npos)
        return {};
    for (const std::string& folder : desktopDataFolders())
    {
        const std::string start = folder + Applications + '/';
        std::string name = id;
        std::size_t dash = 0;
        do
        {
            std::string file = start + name;
            if (access(file.c_str(), R_OK) == 0)
                return file;
            dash = name.find('-');
            if (dash != std::string::npos)
                name[dash] = '/';
        } while (dash != std::string::npos);
    }
    return {};
}

std::string chosenApplicationOf(const std::string& kind)
{
    for (const std::string& list : choiceLists())
        for (const std::string& id : parts(valuesOfGroup(textOfFile(list), "Default Applications")[kind], ';'))
            if (!desktopFileOf(id).empty())
                return id;
    return {};
}

} // namespace Platform
