#pragma once

#include <filesystem>
#include <memory>

namespace StatisticsTesting
{

/// Which statistics component a program finds.
enum class Component
{
    Shipped,
    Refusing, ///< creates no client
    Failing,  ///< every call of its clients fails
    Hanging,  ///< every call of its clients takes a second
    Vanished  ///< it was there once, its file is gone
};

/// Puts the component in place for as long as it lives, and afterwards what was there before. One at a time; before
/// other threads run. The component of a program that was started meanwhile stays what it was at its start.
class InstalledComponent
{
public:
    /// On Linux for the program at `program` alone, which has to be a test's own; empty for the running one. On Windows
    /// for every program of this user.
    explicit InstalledComponent(Component component, const std::filesystem::path& program = {});
    ~InstalledComponent();
    InstalledComponent(const InstalledComponent&) = delete;
    InstalledComponent& operator=(const InstalledComponent&) = delete;

private:
    class Place;
    std::unique_ptr<Place> place_;
};

/// The file of the component that is shipped, beside the program that this build has made.
std::filesystem::path shippedModule();

} // namespace StatisticsTesting
