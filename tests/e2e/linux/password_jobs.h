#pragma once

#include <gtest/gtest.h>
#include <map>

#include "linux/password_terminal.h"
#include "scenarios/sample_folder.h"

namespace EndToEnd
{

inline constexpr int Keep = 0;
inline constexpr int Delete = 1;
inline constexpr int Wipe = 2;

/// The name that the encryption gives.
Path encrypted(const Path& file);
std::vector<Path> encrypted(const std::vector<Path>& files);
/// That many bytes of which no two neighbouring blocks are the same.
std::string manyBytes(std::size_t count);
/// All files below a folder by their paths from there, with their content; a folder without files has a '/' behind it.
std::map<std::string, std::string> contentBelow(const Path& folder);

/// Jobs with passwords in a folder of their own, for tests that need whole jobs before or behind what they look at.
class PasswordJobs : public testing::Test
{
protected:
    /// A whole encryption with nothing that goes wrong.
    void encrypt(const std::vector<Path>& files, int destiny = Delete, const std::string& password = Password);
    /// A whole decryption with one question and nothing that goes wrong.
    void decrypt(const std::vector<Path>& files, const std::string& password = Password);
    // The same with key files, which takes less time: no key has to be derived.
    void encryptByKey(const std::vector<Path>& files, const Path& key, int destiny = Delete);
    void decryptByKey(const std::vector<Path>& files, const Path& key);

    /// The names of all files in the folder.
    std::vector<std::string> names() const;

    static inline const std::string Password = "cold Winter \u00e9";

    const SampleFolder folder;
};

} // namespace EndToEnd
