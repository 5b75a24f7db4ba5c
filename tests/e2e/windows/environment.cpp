#include "scenarios/environment.h"

#include <cstdlib>

namespace EndToEnd
{

const char* const FolderSeparator = ";";

namespace
{

/// For the run-time library and the programs that are started.
void put(const char* name, const Path& value)
{
    _wputenv_s(Path(name).c_str(), value.c_str());
}

} // namespace

EnvironmentVariable::EnvironmentVariable(const char* name, const Path& value) : name_(name)
{
    if (const wchar_t* const former = _wgetenv(Path(name).c_str()))
        former_ = former;
    put(name, value);
}

EnvironmentVariable::~EnvironmentVariable()
{
    put(name_, former_.value_or(Path()));
}

} // namespace EndToEnd
