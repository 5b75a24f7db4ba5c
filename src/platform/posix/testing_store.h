#pragma once

#include "platform/posix/registry_store.h"
#include "platform/testing_folder.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

/// A store asks a function for its folder; this is what it gives.
inline std::string& testingStoreFolder()
{
    static std::string folder;
    return folder;
}

inline std::string folderOfTest()
{
    return testingStoreFolder();
}

/// A variable of the environment, for as long as it is there.
class Variable
{
public:
    Variable(const char* name, const char* value) : name_(name)
    {
        if (const char* before = std::getenv(name))
            before_ = before;
        value ? ::setenv(name, value, 1) : ::unsetenv(name);
    }
    ~Variable() { before_ ? ::setenv(name_, before_->c_str(), 1) : ::unsetenv(name_); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* name_;
    std::optional<std::string> before_;
};

/// Root has every right; while this is there, the process is a user without, to whom the folder belongs.
class Unprivileged
{
public:
    explicit Unprivileged(const std::string& folder)
    {
        std::filesystem::create_directories(folder);
        if (!isRoot_)
            return;
        EXPECT_EQ(::chown(folder.c_str(), Nobody, Nobody), 0);
        EXPECT_EQ(::seteuid(Nobody), 0);
    }
    ~Unprivileged() { EXPECT_EQ(::seteuid(isRoot_ ? 0 : ::geteuid()), 0); }
    Unprivileged(const Unprivileged&) = delete;
    Unprivileged& operator=(const Unprivileged&) = delete;

private:
    static constexpr uid_t Nobody = 65534;
    const bool isRoot_ = ::geteuid() == 0;
};

/// A store in a folder of the test, which is not there yet, and values of its root as narrow text.
class TestingStore : public testing::Test
{
protected:
    TestingStore() { moveTo("/config/jobrunner"); }

    /// The folder of the store, from now on.
    void moveTo(const std::string& folder) { testingStoreFolder() = Platform::toUtf8(root_.path()) + folder; }

    std::string folder() { return folderOfTest(); }
    std::string parent() { return folder().substr(0, folder().rfind('/')); }
    std::string file() { return folder() + "/registry"; }

    std::uint32_t set(Platform::Registry& registry, const std::wstring& name, const std::string& value)
    {
        return registry.setValue(Platform::CurrentUser, name, Platform::ValueBinary, value.data(),
                                 static_cast<std::uint32_t>(value.size()));
    }
    std::uint32_t set(const std::wstring& name, const std::string& value) { return set(registry_, name, value); }

    /// The value, or the error as text.
    std::string get(Platform::Registry& registry, const std::wstring& name)
    {
        std::string value(100, '\0');
        std::uint32_t type = 0;
        auto size = static_cast<std::uint32_t>(value.size());
        const std::uint32_t error = registry.queryValue(Platform::CurrentUser, name, type, value.data(), size);
        value.resize(size);
        return error == 0 ? value : "error " + std::to_string(error);
    }
    std::string get(const std::wstring& name) { return get(registry_, name); }

    std::string content()
    {
        std::ifstream stream(file(), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    /// In place, as an editor may do it.
    void write(const std::string& content) { std::ofstream(file(), std::ios::binary) << content; }

    static unsigned modeOf(const std::string& path)
    {
        struct stat status = {};
        EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
        return status.st_mode & 0777;
    }

    static std::vector<std::string> filesIn(const std::string& folder)
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        return names;
    }

    TestingFolder root_;
    Platform::RegistryStore store_{folderOfTest};
    Platform::RegistryOnTree registry_{store_};
};
