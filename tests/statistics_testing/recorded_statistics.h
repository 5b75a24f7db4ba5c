#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace StatisticsTesting
{

/// The calls in a journal, oldest first, its older generation included, as "SendView(PATH, TITLE)" in UTF-8; a value
/// that is absent is "none". What is no whole line appears as "damaged: " and its text.
std::vector<std::string> callsIn(const std::filesystem::path& journal);

/// The journal of this user, empty at the start; the user's own comes back at the end. For this process and those that
/// it starts. One at a time; before other threads run.
class RecordedStatistics
{
public:
    RecordedStatistics();
    ~RecordedStatistics();
    RecordedStatistics(const RecordedStatistics&) = delete;
    RecordedStatistics& operator=(const RecordedStatistics&) = delete;

    static std::filesystem::path file();
    std::vector<std::string> calls() const { return callsIn(file()); }
    void clear() const;

private:
    class Former;
    std::unique_ptr<Former> former_;
};

} // namespace StatisticsTesting
