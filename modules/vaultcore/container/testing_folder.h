#pragma once

#include "platform/utf8.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>

namespace VaultCore
{

/// A folder of its own for each test, removed with all that is in it.
class InFolder : public testing::Test
{
protected:
    InFolder() { std::filesystem::create_directory(folder); }
    ~InFolder() override
    {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }

    static std::wstring wideOf(const std::filesystem::path& path)
    {
        const std::u8string text = path.u8string();
        return Platform::fromUtf8({reinterpret_cast<const char*>(text.data()), text.size()});
    }

    std::filesystem::path put(const std::string& name, const std::string& text) const
    {
        std::ofstream(folder / name, std::ios::binary) << text;
        return folder / name;
    }

    static std::string contentOfFile(const std::filesystem::path& path)
    {
        std::ifstream stream(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("vaultcore-keys-" + std::to_string(std::random_device()()));
};

} // namespace VaultCore
