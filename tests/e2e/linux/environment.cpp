#include "scenarios/environment.h"

#include <cstdlib>

namespace EndToEnd
{

const char* const FolderSeparator = ":";

EnvironmentVariable::EnvironmentVariable(const char* name, const Path& value) : name_(name)
{
    if (const char* const former = std::getenv(name))
        former_ = former;
    setenv(name, value.c_str(), 1);
}

EnvironmentVariable::~EnvironmentVariable()
{
    former_ ? setenv(name_, former_->c_str(), 1) : unsetenv(name_);
}

} // namespace EndToEnd
