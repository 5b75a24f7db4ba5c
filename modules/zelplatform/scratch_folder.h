#pragma once

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace ZelPlatform
{

/// A test with an empty folder of its own, which goes away with it.
class ScratchFolder : public testing::Test
{
protected:
    void SetUp() override
    {
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        folder_ = std::filesystem::temp_directory_path() / (std::string("zelplatform-") + test->name());
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directories(folder_);
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    std::filesystem::path file(const std::string& name) const { return folder_ / name; }
    static void write(const std::filesystem::path& path, std::string_view content)
    {
        std::ofstream(path, std::ios::binary) << content;
    }
    std::size_t entries() const
    {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator(folder_), std::filesystem::directory_iterator()));
    }

private:
    std::filesystem::path folder_;
};

} // namespace ZelPlatform
