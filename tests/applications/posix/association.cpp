#include "applications/association.h"

#include "platform/utf8.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <stdexcept>

namespace Applications
{

namespace
{

using Path = std::filesystem::path;

/// The desktop tells the kind of a file from what is in it; the documents of the tests are plain text.
constexpr char Kind[] = "text/plain";
constexpr char Id[] = "jobrunner_test.desktop";

/// Several test programs may run at a time.
Path desktop()
{
    return std::filesystem::temp_directory_path() / ("jobrunner_test_desktop-" + std::to_string(getpid()));
}

/// What the variables of the environment were that have been changed.
std::map<std::string, std::optional<std::string>>& variablesBefore()
{
    static std::map<std::string, std::optional<std::string>> variables;
    return variables;
}

void setVariable(const std::string& name, const std::optional<std::string>& value)
{
    if (value)
        setenv(name.c_str(), value->c_str(), 1);
    else
        unsetenv(name.c_str());
}

void changeVariable(const std::string& name, const std::optional<std::string>& value)
{
    const char* const before = std::getenv(name.c_str());
    variablesBefore()[name] = before ? std::optional<std::string>(before) : std::nullopt;
    setVariable(name, value);
}

/// From now on only what is in this folder counts as the user's desktop, for all that this process starts.
void enter(const Path& folder)
{
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder / "applications");
    for (const char* name : {"XDG_DATA_HOME", "XDG_DATA_DIRS", "XDG_CONFIG_HOME", "XDG_CONFIG_DIRS"})
        changeVariable(name, folder.string());
    // No tool of a certain desktop is asked.
    for (const char* name :
         {"XDG_CURRENT_DESKTOP", "KDE_FULL_SESSION", "GNOME_DESKTOP_SESSION_ID", "MATE_DESKTOP_SESSION_ID",
          "DESKTOP_SESSION", "DESKTOP", "DISPLAY", "DBUS_SESSION_BUS_ADDRESS"})
        changeVariable(name, std::nullopt);
}

void write(const Path& file, const std::string& content)
{
    if (!(std::ofstream(file) << content).flush())
        throw std::runtime_error("the association cannot be written");
}

/// In a command a percent sign stands for something else, and in each text of the file a backslash does.
std::string escaped(const std::wstring& arguments)
{
    std::string text;
    for (const char character : Platform::toUtf8(arguments))
        text += character == '%' ? "%%" : character == '\\' ? "\\\\" : std::string(1, character);
    return text;
}

} // namespace

Association::Association(std::wstring extension) : extension_(std::move(extension))
{
    enter(desktop());
}

Association::Association(std::wstring extension, const std::wstring& arguments) : Association(std::move(extension))
{
    const std::string command = '"' + escaped(testApplication()) + "\" " + escaped(arguments) + " %f";
    write(desktop() / "applications" / Id,
          "[Desktop Entry]\nType=Application\nName=Test application\nExec=" + command + '\n');
    write(desktop() / "mimeapps.list", std::string("[Default Applications]\n") + Kind + '=' + Id + '\n');
}

Association::~Association()
{
    for (const auto& [name, value] : variablesBefore())
        setVariable(name, value);
    std::error_code ignored;
    std::filesystem::remove_all(desktop(), ignored);
}

std::wstring testApplication()
{
    const Path program = std::filesystem::read_symlink("/proc/self/exe");
    return Platform::fromUtf8((program.parent_path() / "test_application").string());
}

} // namespace Applications
