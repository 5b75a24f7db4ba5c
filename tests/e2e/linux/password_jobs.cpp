#include "linux/password_jobs.h"

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

namespace EndToEnd
{

Path encrypted(const Path& file)
{
    return file.string() + ".zel";
}

std::vector<Path> encrypted(const std::vector<Path>& files)
{
    std::vector<Path> results;
    for (const Path& file : files)
        results.push_back(encrypted(file));
    return results;
}

std::string manyBytes(std::size_t count)
{
    std::string bytes(count, '\0');
    for (std::size_t i = 0; i < count; ++i)
        bytes[i] = static_cast<char>((i * 31 + i / 251) & 0xFF);
    return bytes;
}

std::map<std::string, std::string> contentBelow(const Path& folder)
{
    std::map<std::string, std::string> found;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder))
    {
        const std::string name = entry.path().lexically_relative(folder);
        if (entry.is_regular_file())
            found[name] = contentOf(entry.path());
        else if (entry.is_directory() && fs::is_empty(entry.path()))
            found[name + '/'] = "";
    }
    return found;
}

void PasswordJobs::encrypt(const std::vector<Path>& files, int destiny, const std::string& password)
{
    PasswordTerminal terminal(folder.addEncryptJob(files, destiny));
    ASSERT_TRUE(terminal.asksForNewPassword()) << terminal.shown();
    terminal.newPassword(password);
    ASSERT_EQ(terminal.exitCode(), 0) << terminal.shown();
}

void PasswordJobs::decrypt(const std::vector<Path>& files, const std::string& password)
{
    PasswordTerminal terminal(folder.addDecryptJob(files));
    ASSERT_TRUE(terminal.asksForPassword()) << terminal.shown();
    terminal.password(password);
    ASSERT_EQ(terminal.exitCode(), 0) << terminal.shown();
}

void PasswordJobs::encryptByKey(const std::vector<Path>& files, const Path& key, int destiny)
{
    PasswordTerminal terminal(folder.addEncryptJob(files, destiny));
    ASSERT_TRUE(terminal.asksForNewPassword()) << terminal.shown();
    terminal.keyFile(key);
    ASSERT_EQ(terminal.exitCode(), 0) << terminal.shown();
}

void PasswordJobs::decryptByKey(const std::vector<Path>& files, const Path& key)
{
    PasswordTerminal terminal(folder.addDecryptJob(files));
    ASSERT_TRUE(terminal.asksForPassword()) << terminal.shown();
    terminal.keyFile(key);
    ASSERT_EQ(terminal.exitCode(), 0) << terminal.shown();
}

std::vector<std::string> PasswordJobs::names() const
{
    std::vector<std::string> found;
    for (const auto& [name, content] : contentBelow(folder.path()))
        found.push_back(name);
    return found;
}

} // namespace EndToEnd
