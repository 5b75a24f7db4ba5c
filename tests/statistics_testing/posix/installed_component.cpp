#include "statistics_testing/installed_component.h"

#include "statistics_testing/modules_of_build.h"

#include <cstdlib>
#include <stdexcept>

namespace fs = std::filesystem;

namespace StatisticsTesting
{

/// The file beside the program that the component is loaded from.
class InstalledComponent::Place
{
public:
    Place(Component component, const fs::path& program)
        : file_((program.empty() ? ownProgram() : program).parent_path() / shippedModule().filename()),
          kept_(file_.string() + ".kept")
    {
        // The program that was built, and others in its folder, are not a test's own.
        if (fs::exists(file_) && fs::equivalent(file_, shippedModule()))
            throw std::runtime_error("the shipped component is not to be replaced");
        if (fs::exists(file_))
            fs::rename(file_, kept_);
        if (component != Component::Vanished)
            fs::copy_file(moduleOf(component), file_);
        if (const char* const fault = faultOf(component))
            ::setenv(FaultVariable, fault, 1);
    }
    ~Place()
    {
        std::error_code ignored;
        fs::remove(file_, ignored);
        if (fs::exists(kept_))
            fs::rename(kept_, file_, ignored);
        ::unsetenv(FaultVariable);
    }
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;

private:
    const fs::path file_;
    const fs::path kept_;
};

InstalledComponent::InstalledComponent(Component component, const fs::path& program)
    : place_(std::make_unique<Place>(component, program))
{
}

InstalledComponent::~InstalledComponent() = default;

} // namespace StatisticsTesting
