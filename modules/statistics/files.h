#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace StatisticsModule
{

/// A plain file that only the user may read. It is closed, and its lock given up, at the latest with the process.
class PrivateFile
{
public:
    /// Opens the file, and creates it and the folders above it where they are missing. Never waits.
    explicit PrivateFile(const std::filesystem::path& path);
    ~PrivateFile();
    PrivateFile(const PrivateFile&) = delete;
    PrivateFile& operator=(const PrivateFile&) = delete;

    bool isOpen() const { return handle_ != Closed; }
    /// Takes the one lock of this file, which no other object of this or another process has. False when it cannot.
    bool tryLock();
    std::uint64_t size() const;
    /// At most `count` bytes at the end; empty on failure.
    std::string end(std::size_t count) const;
    bool cutTo(std::uint64_t size);
    /// Appends all of `text`; a failure may leave a part of it.
    bool append(std::string_view text);

private:
    static constexpr std::intptr_t Closed = -1;
    std::intptr_t handle_ = Closed;
};

/// Where the calls of this user are kept; empty when the user has no folder for such a file.
std::filesystem::path userJournalFile();

std::uint32_t currentProcess();

} // namespace StatisticsModule
