#include "platform/posix/process_records.h"

#include "platform/posix/text_of_file.h"

#include <dirent.h>
#include <limits.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <memory>
#include <sstream>

namespace Platform
{

namespace
{

constexpr std::string_view DeletedMark = " (deleted)";

std::string folderOf(std::uint32_t process)
{
    return "/proc/" + std::to_string(process);
}

std::optional<std::uint32_t> numberOf(std::string_view text)
{
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

} // namespace

std::vector<std::uint32_t> numbersIn(const std::string& folder)
{
    std::vector<std::uint32_t> numbers;
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(opendir(folder.c_str()), closedir);
    while (const dirent* const entry = directory ? readdir(directory.get()) : nullptr)
        if (const auto number = numberOf(entry->d_name))
            numbers.push_back(*number);
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

std::optional<ProcessRecord> parseProcessRecord(const std::string& text)
{
    // The name stands in brackets and may hold brackets and spaces itself.
    const std::size_t open = text.find('(');
    const std::size_t close = text.rfind(')');
    if (open == std::string::npos || close == std::string::npos || close < open)
        return std::nullopt;
    ProcessRecord record;
    char state = 0;
    std::istringstream(text) >> record.id;
    record.name = text.substr(open + 1, close - open - 1);

    std::istringstream fields(text.substr(close + 1));
    fields >> state >> record.parent;
    constexpr int FieldsToThreads = 15;
    std::string skipped;
    for (int i = 0; i < FieldsToThreads; ++i)
        fields >> skipped;
    std::uint32_t threads = 0;
    fields >> threads >> skipped >> record.started;
    if (!fields)
        return std::nullopt;
    // When the first thread has ended and others run on, the process does.
    record.hasEnded = (state == 'Z' || state == 'X') && threads <= 1;
    return record;
}

std::optional<ProcessRecord> processRecord(std::uint32_t id)
{
    return parseProcessRecord(textOfFile(folderOf(id) + "/stat"));
}

std::vector<ProcessRecord> processRecords()
{
    std::vector<ProcessRecord> records;
    for (const std::uint32_t id : numbersIn("/proc"))
        if (auto record = processRecord(id))
            records.push_back(std::move(*record));
    return records;
}

std::vector<std::uint32_t> threadsOf(std::uint32_t process)
{
    return numbersIn(folderOf(process) + "/task");
}

std::string programOf(std::uint32_t process)
{
    std::array<char, PATH_MAX> buffer{};
    const ssize_t length = readlink((folderOf(process) + "/exe").c_str(), buffer.data(), buffer.size());
    std::string path(buffer.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
    // The program was replaced by a newer one since it was started.
    if (path.ends_with(DeletedMark))
        path.erase(path.size() - DeletedMark.size());
    return path;
}

std::uint64_t processTicks()
{
    timespec now{};
    clock_gettime(CLOCK_BOOTTIME, &now);
    const auto perSecond = static_cast<std::uint64_t>(sysconf(_SC_CLK_TCK));
    constexpr std::uint64_t NanosecondsPerSecond = 1'000'000'000;
    return static_cast<std::uint64_t>(now.tv_sec) * perSecond +
           static_cast<std::uint64_t>(now.tv_nsec) * perSecond / NanosecondsPerSecond;
}

} // namespace Platform
