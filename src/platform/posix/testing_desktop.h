#pragma once

#include "platform/testing_folder.h"

#include <sys/stat.h>

#include <cstdlib>
#include <map>
#include <optional>
#include <string>

/// A desktop of the test's own: the applications, and the kinds of files that they open, are those that the test adds.
/// One kind of file is known, that of `Content`, to which every file name will do. While it is there, no other thread
/// may read the environment.
class TestingDesktop
{
public:
    static constexpr char Kind[] = "application/postscript";
    static constexpr char Content[] = "%!PS-Adobe-3.0\n";

    explicit TestingDesktop(const std::wstring& folder) : folder_(folder)
    {
        std::filesystem::create_directories(TestingFolder::fileOf(folder_ + L"/data/applications"));
        std::filesystem::create_directories(TestingFolder::fileOf(folder_ + L"/config"));
        for (const char* name : {"XDG_DATA_HOME", "XDG_DATA_DIRS"})
            set(name, Platform::toUtf8(folder_ + L"/data"));
        for (const char* name : {"XDG_CONFIG_HOME", "XDG_CONFIG_DIRS"})
            set(name, Platform::toUtf8(folder_ + L"/config"));
        // No tool of a certain desktop is asked.
        for (const char* name :
             {"XDG_CURRENT_DESKTOP", "KDE_FULL_SESSION", "GNOME_DESKTOP_SESSION_ID", "MATE_DESKTOP_SESSION_ID",
              "DESKTOP_SESSION", "DESKTOP", "DISPLAY", "DBUS_SESSION_BUS_ADDRESS"})
            set(name, std::nullopt);
    }
    ~TestingDesktop()
    {
        for (const auto& [name, value] : before_)
            put(name, value);
    }
    TestingDesktop(const TestingDesktop&) = delete;
    TestingDesktop& operator=(const TestingDesktop&) = delete;

    /// An application that is started by this command; `id` is the name of its file, without ".desktop".
    void addApplication(const std::string& id, const std::string& command, const std::string& more = {})
    {
        TestingFolder::write(folder_ + L"/data/applications/" + Platform::fromUtf8(id) + L".desktop",
                             "[Desktop Entry]\nType=Application\nName=The " + id + "\nExec=" + command + '\n' + more);
    }

    /// From now on it opens the documents.
    void makeDefault(const std::string& id)
    {
        TestingFolder::write(folder_ + L"/config/mimeapps.list",
                             std::string("[Default Applications]\n") + Kind + '=' + id + ".desktop\n");
    }

    /// A program of a few lines for the shell. Its full path, which has no character that a command would quote.
    std::string addScript(const std::string& name, const std::string& lines)
    {
        const std::wstring path = folder_ + L'/' + Platform::fromUtf8(name);
        TestingFolder::write(path, "#!/bin/sh\n" + lines);
        ::chmod(Platform::toUtf8(path).c_str(), S_IRWXU);
        return Platform::toUtf8(path);
    }

private:
    using Value = std::optional<std::string>;

    void set(const std::string& name, const Value& value)
    {
        const char* const before = std::getenv(name.c_str());
        before_[name] = before ? Value(before) : std::nullopt;
        put(name, value);
    }
    static void put(const std::string& name, const Value& value)
    {
        if (value)
            ::setenv(name.c_str(), value->c_str(), 1);
        else
            ::unsetenv(name.c_str());
    }

    const std::wstring folder_;
    std::map<std::string, Value> before_;
};
