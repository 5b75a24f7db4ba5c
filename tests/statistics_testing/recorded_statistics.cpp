#include "statistics_testing/recorded_statistics.h"

#include "statistics/journal.h"

#include <fstream>
#include <nlohmann/json.hpp>

namespace StatisticsTesting
{
namespace
{

using nlohmann::json;
using StatisticsModule::Journal;

bool isCall(const json& line)
{
    return line.is_array() && line.size() >= 3 && line[0].is_string() && line[1].is_number_unsigned() &&
           line[2].is_string();
}

std::string argumentText(const json& argument)
{
    if (argument.is_null())
        return "none";
    return argument.is_string() ? argument.get<std::string>() : argument.dump();
}

std::string callOf(const std::string& text, bool isEnded)
{
    const json line = json::parse(text, nullptr, false);
    if (!isEnded || !isCall(line))
        return "damaged: " + text;
    std::string call = line[2].get<std::string>() + "(";
    for (std::size_t index = 3; index < line.size(); ++index)
        call += (index == 3 ? "" : ", ") + argumentText(line[index]);
    return call + ")";
}

void addCalls(const std::filesystem::path& file, std::vector<std::string>& calls)
{
    std::ifstream stream(file, std::ios::binary);
    for (std::string line; std::getline(stream, line);)
        calls.push_back(callOf(line, !stream.eof()));
}

} // namespace

std::vector<std::string> callsIn(const std::filesystem::path& journal)
{
    std::vector<std::string> calls;
    addCalls(Journal::olderFileOf(journal), calls);
    addCalls(journal, calls);
    return calls;
}

std::filesystem::path RecordedStatistics::file()
{
    return StatisticsModule::userJournalFile();
}

void RecordedStatistics::clear() const
{
    std::filesystem::remove(Journal::olderFileOf(file()));
    std::filesystem::remove(file());
}

} // namespace StatisticsTesting
