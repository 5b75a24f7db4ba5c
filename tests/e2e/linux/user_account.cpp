#include "recorded/user_account.h"

#include <cstdlib>
#include <filesystem>

namespace EndToEnd
{

namespace
{

/// A variable of the environment that has another value for a while.
class Variable
{
public:
    Variable(const char* name, const Path& value) : name_(name)
    {
        if (const char* const former = std::getenv(name))
            former_ = former;
        setenv(name, value.c_str(), 1);
    }
    ~Variable() { former_ ? setenv(name_, former_->c_str(), 1) : unsetenv(name_); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* const name_;
    std::optional<std::string> former_;
};

/// A copy of the program, since the component beside the one under test is not to be replaced.
class CopiedProgram
{
public:
    explicit CopiedProgram(std::optional<Component> component) : program_(copyProgram(folder_.path() / "bin"))
    {
        std::filesystem::remove(moduleBeside(program_, "statistics"));
        if (component)
            installed_.emplace(*component, program_);
    }

private:
    const SampleFolder folder_;
    const Path program_;
    std::optional<StatisticsTesting::InstalledComponent> installed_;
    const Variable variable_{"JOBRUNNER_PROGRAM", program_};
};

} // namespace

class UserAccount::Place
{
public:
    explicit Place(std::optional<Component> component)
    {
        if (component != Component::Shipped)
            program_.emplace(component);
    }

private:
    const SampleFolder folder_;
    const Variable settings_{"XDG_CONFIG_HOME", folder_.path()};
    std::optional<CopiedProgram> program_;
};

UserAccount::UserAccount(std::optional<Component> component) : place_(std::make_unique<Place>(component)) {}

UserAccount::~UserAccount() = default;

} // namespace EndToEnd
