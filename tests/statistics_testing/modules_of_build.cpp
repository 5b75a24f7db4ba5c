#include "statistics_testing/modules_of_build.h"

#include "platform/modules.h"
#include "platform/platform.h"

namespace StatisticsTesting
{

std::filesystem::path ownProgram()
{
    return Platform::nativeSystem().modules.fileName(nullptr);
}

std::filesystem::path moduleOf(Component component)
{
    const auto tests = ownProgram().parent_path();
    const auto file = Platform::nativeSystem().modules.moduleFileName(L"statistics");
    if (component == Component::Shipped)
        return tests.parent_path() / "bin" / file;
    return tests / (component == Component::Vanished ? "vanished" : "misbehaving") / file;
}

std::filesystem::path shippedModule()
{
    return moduleOf(Component::Shipped);
}

const char* faultOf(Component component)
{
    switch (component)
    {
    case Component::Refusing:
        return "refuse";
    case Component::Failing:
        return "fail";
    case Component::Hanging:
        return "hang";
    default:
        return nullptr;
    }
}

} // namespace StatisticsTesting
