#pragma once

#include "platform/testing_folder.h"

#include <cstdlib>
#include <optional>
#include <string>

/// While it is there, the user's settings are below a folder of the test.
class OwnSettings
{
public:
    OwnSettings()
    {
        if (const char* value = std::getenv("XDG_CONFIG_HOME"))
            before_ = value;
        ::setenv("XDG_CONFIG_HOME", Platform::toUtf8(folder_.path()).c_str(), 1);
    }
    ~OwnSettings() { before_ ? ::setenv("XDG_CONFIG_HOME", before_->c_str(), 1) : ::unsetenv("XDG_CONFIG_HOME"); }
    OwnSettings(const OwnSettings&) = delete;
    OwnSettings& operator=(const OwnSettings&) = delete;

private:
    TestingFolder folder_;
    std::optional<std::string> before_;
};
