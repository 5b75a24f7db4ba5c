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
    void TearDown() override
    {
        flattenLongFolder();
        std::filesystem::remove_all(folder_);
    }

    std::filesystem::path file(const std::string& name) const { return folder_ / name; }
    /// A path of more than 300 characters, whose folders do not exist yet.
    std::filesystem::path longPath() const
    {
        auto path = file("long");
        for (int count = 0; count < 4; ++count)
            path /= LongPart;
        return path / "my job.json";
    }
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
    /// Takes the levels out one by one, since not every library can remove a folder with a long path.
    void flattenLongFolder() const
    {
        while (std::filesystem::exists(file("long") / LongPart))
        {
            std::filesystem::rename(file("long") / LongPart, file("inner"));
            std::filesystem::remove(file("long"));
            std::filesystem::rename(file("inner"), file("long"));
        }
    }

    inline static const std::string LongPart = std::string(80, 'x');
    std::filesystem::path folder_;
};

} // namespace ZelPlatform
