#pragma once

#include "scenarios/sample_folder.h"

#include <optional>

namespace EndToEnd
{

/// A variable of the environment that has another value for a while, for the programs that a test starts. One thread.
class EnvironmentVariable
{
public:
    EnvironmentVariable(const char* name, const Path& value);
    ~EnvironmentVariable();
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

    const std::optional<Path>& former() const { return former_; }

private:
    const char* const name_;
    std::optional<Path> former_;
};

/// What stands between the folders of a search path.
extern const char* const FolderSeparator;

} // namespace EndToEnd
