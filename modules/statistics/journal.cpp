#include "statistics/journal.h"

#include "statistics/journal_line.h"

#include <thread>
#include <utility>

namespace StatisticsModule
{
namespace
{

using Clock = std::chrono::steady_clock;

constexpr std::chrono::microseconds Pause{500};

/// Takes away the part of a line that a process has left which was ended while it wrote.
bool cutUnfinishedLine(PrivateFile& file)
{
    const std::string last = file.end(1);
    if (last.empty() || last == "\n")
        return true;
    const std::string end = file.end(Journal::LongestLine);
    const std::size_t whole = end.rfind('\n') + 1;
    return file.cutTo(file.size() - (end.size() - whole));
}

std::filesystem::path withExtension(std::filesystem::path file, const char* extension)
{
    return file.replace_extension(extension);
}

} // namespace

Journal::Journal(JournalSettings settings)
    : settings_(std::move(settings)), restsUntil_(Clock::now().time_since_epoch().count())
{
}

std::filesystem::path Journal::olderFileOf(const std::filesystem::path& file)
{
    return withExtension(file, ".old.log");
}

std::filesystem::path Journal::lockFileOf(const std::filesystem::path& file)
{
    return withExtension(file, ".lock");
}

bool Journal::record(const Call& call)
{
    if (settings_.file.empty())
        return false;
    PrivateFile turn(lockFileOf(settings_.file));
    if (!turn.isOpen() || !waitForTurn(turn))
        return false;
    // The time is taken when it is this call's turn, so that times rise in the file.
    const std::string line = journalLine(std::chrono::system_clock::now(), currentProcess(), call);
    return line.size() <= LongestLine && makeRoom(line.size()) && add(line);
}

bool Journal::waitForTurn(PrivateFile& turn)
{
    const auto start = Clock::now();
    const bool rests = start.time_since_epoch().count() < restsUntil_.load();
    const auto end = rests ? start : start + settings_.patience;
    while (!turn.tryLock())
    {
        if (Clock::now() >= end)
        {
            if (!rests)
                restsUntil_ = (Clock::now() + settings_.rest).time_since_epoch().count();
            return false;
        }
        std::this_thread::sleep_for(Pause);
    }
    return true;
}

bool Journal::makeRoom(std::size_t size)
{
    std::error_code failure;
    const std::uintmax_t used = std::filesystem::file_size(settings_.file, failure);
    if (failure || used + size <= settings_.limit)
        return true;
    // To rename over a file can wait for the disk, and with it everybody whose turn it is not.
    std::filesystem::remove(olderFileOf(settings_.file), failure);
    std::filesystem::rename(settings_.file, olderFileOf(settings_.file), failure);
    return !failure;
}

bool Journal::add(const std::string& line)
{
    PrivateFile file(settings_.file);
    if (!file.isOpen() || !cutUnfinishedLine(file))
        return false;
    const std::uint64_t before = file.size();
    if (file.append(line))
        return true;
    file.cutTo(before);
    return false;
}

} // namespace StatisticsModule
