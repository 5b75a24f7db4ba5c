#pragma once

#include "platform/platform.h"
#include "platform/utf8.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

/// An empty folder of its own for each test that asks for one; it goes away with the object.
class TestingFolder
{
public:
    TestingFolder()
    {
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        std::string name = std::string("jobrunner-") + test->test_suite_name() + '-' + test->name();
        for (char& character : name)
            if (character == '/')
                character = '-';
        folder_ = std::filesystem::temp_directory_path() / name;
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directories(folder_);
    }
    ~TestingFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    TestingFolder(const TestingFolder&) = delete;
    TestingFolder& operator=(const TestingFolder&) = delete;

    /// Without a separator at its end.
    std::wstring path() const { return Platform::fromUtf8(reinterpret_cast<const char*>(folder_.u8string().c_str())); }

    static std::filesystem::path fileOf(const std::wstring& path)
    {
        const std::string text = Platform::toUtf8(path);
        return std::u8string(text.begin(), text.end());
    }
    static void write(const std::wstring& path, const std::string& content)
    {
        std::ofstream(fileOf(path), std::ios::binary) << content;
    }

private:
    std::filesystem::path folder_;
};
