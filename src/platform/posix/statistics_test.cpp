#include "platform/statistics.h"

#include "platform/platform.h"
#include "statistics_testing/installed_component.h"
#include "statistics_testing/modules_of_build.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>

namespace fs = std::filesystem;

namespace
{

constexpr std::uint32_t InProcess = 1;

/// What the program makes of the file of the component, once `prepare` has made it what it is.
bool isComponent(const std::function<void(const fs::path&)>& prepare)
{
    const StatisticsTesting::InstalledComponent none(StatisticsTesting::Component::Vanished);
    prepare(StatisticsTesting::ownProgram().replace_filename("statistics.so"));
    std::unique_ptr<Platform::StatisticsFactory> factory;
    const bool isGood = Platform::nativeSystem().statistics.createFactory(InProcess, factory) >= 0;
    EXPECT_EQ(isGood, factory != nullptr);
    return isGood;
}

} // namespace

TEST(TheComponentOnLinux, isTheModuleBesideTheProgram)
{
    EXPECT_TRUE(isComponent([](const fs::path& file) { fs::copy_file(StatisticsTesting::shippedModule(), file); }));
}

TEST(TheComponentOnLinux, isNotSearchedForElsewhere)
{
    const fs::path before = fs::current_path();
    fs::current_path(StatisticsTesting::shippedModule().parent_path());
    EXPECT_FALSE(isComponent([](const fs::path&) {}));
    fs::current_path(before);
}

TEST(TheComponentOnLinux, isNoDamagedFile)
{
    EXPECT_FALSE(isComponent([](const fs::path& file) { std::ofstream(file) << "damaged"; }));
    EXPECT_FALSE(isComponent([](const fs::path& file) { std::ofstream(file).flush(); }));
    EXPECT_FALSE(isComponent([](const fs::path& file) { fs::create_directory(file); }));
}

TEST(TheComponentOnLinux, isNoOtherModule)
{
    EXPECT_FALSE(
        isComponent([](const fs::path& file)
                    { fs::copy_file(StatisticsTesting::shippedModule().replace_filename("zelplatform.so"), file); }));
}

TEST(TheComponentOnLinux, goesWithTheLastOfItsObjects)
{
    std::unique_ptr<Platform::StatisticsFactory> kept;
    {
        const StatisticsTesting::InstalledComponent installed(StatisticsTesting::Component::Shipped);
        ASSERT_GE(Platform::nativeSystem().statistics.createFactory(InProcess, kept), 0);
    }
    EXPECT_TRUE(isComponent([](const fs::path&) {})) << "it is loaded, though its file is gone";
    kept.reset();
    EXPECT_FALSE(isComponent([](const fs::path&) {}));
}
