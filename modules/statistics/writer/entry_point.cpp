#include "statistics/journal.h"

#include <cstdlib>

// statistics_writer FILE LIMIT MILLISECONDS NAME: records calls of NAME, numbered from 0, in the journal FILE and
// prints how many. Ends with 1 as soon as a call is not kept.

namespace
{

using namespace StatisticsModule;

bool writeFor(Journal& journal, std::chrono::milliseconds duration, const std::wstring& name)
{
    int count = 0;
    const auto end = std::chrono::steady_clock::now() + duration;
    for (; std::chrono::steady_clock::now() < end; ++count)
        if (!journal.record({"SendEvent", {std::wstring_view(name), std::int64_t{count}}}))
            return false;
    return journal.record({"SetDimension", {std::int64_t{count}, std::wstring_view(name)}});
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 5)
        return 2;
    JournalSettings settings;
    settings.file = arguments[1];
    settings.limit = std::strtoull(arguments[2], nullptr, 10);
    // No call may be lost between the writers, however long the disk of a busy machine takes.
    settings.patience = std::chrono::minutes(1);
    Journal journal(settings);
    const std::string name = arguments[4];
    const auto duration = std::chrono::milliseconds(std::atoi(arguments[3]));
    return writeFor(journal, duration, std::wstring(name.begin(), name.end())) ? 0 : 1;
}
