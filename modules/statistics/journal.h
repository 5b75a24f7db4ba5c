#pragma once

#include "statistics/files.h"
#include "statistics/recorder.h"

#include <atomic>
#include <chrono>
#include <filesystem>

namespace StatisticsModule
{

struct JournalSettings
{
    /// Empty for a journal that keeps nothing.
    std::filesystem::path file;
    /// Bytes that the file has at most.
    std::uint64_t limit = std::uint64_t{1024} * 1024;
    /// How long a call waits for its turn. After a wait in vain the next calls do not wait for as long as `rest`.
    std::chrono::milliseconds patience{1000};
    std::chrono::milliseconds rest{30000};
};

/// The file that the calls are kept in, one a line, in the order in which they came. When it would pass its limit it
/// becomes the one older generation and a new one begins. Safe from many threads and processes: a line is there as a
/// whole when `record` is back, or not at all.
class Journal : public Recorder
{
public:
    explicit Journal(JournalSettings settings);

    bool record(const Call& call) override;

    /// Bytes that a line has at most; a longer one is not kept.
    static constexpr std::size_t LongestLine = std::size_t{64} * 1024;
    /// The older generation, and the file that is locked while a line is written, of the journal at `file`.
    static std::filesystem::path olderFileOf(const std::filesystem::path& file);
    static std::filesystem::path lockFileOf(const std::filesystem::path& file);

private:
    bool waitForTurn(PrivateFile& turn);
    bool add(const std::string& line);
    bool makeRoom(std::size_t size);

    const JournalSettings settings_;
    /// Until when nobody waits, as the steady clock counts.
    std::atomic<std::chrono::steady_clock::rep> restsUntil_;
};

} // namespace StatisticsModule
