#include "start/measured_start.h"

#include <stdexcept>

#include "windows/running_program.h"

namespace Benchmarks
{

namespace
{

constexpr auto Limit = std::chrono::seconds(20);

/// Looks every millisecond or two; throws when the time is over.
template <class Condition> void waitFor(Condition condition, const char* failure)
{
    const auto end = Clock::now() + Limit;
    while (!condition())
    {
        if (Clock::now() > end)
            throw std::runtime_error(failure);
        Sleep(1);
    }
}

EndToEnd::Window questionOf(const EndToEnd::RunningProgram& program)
{
    for (const EndToEnd::Window& window : program.visibleWindows())
    {
        if (window.caption() == L"Securely Delete Items" && window.hasItem(IDYES))
            return window;
    }
    return EndToEnd::Window();
}

} // namespace

MeasuredStart measureStart(const std::filesystem::path& program, const std::filesystem::path& job,
                           const std::filesystem::path& firstFile)
{
    const auto start = Clock::now();
    const EndToEnd::RunningProgram running(program, EndToEnd::quoted(job));
    EndToEnd::Window question;
    waitFor([&] { return static_cast<bool>(question = questionOf(running)); }, "the program does not ask");
    const auto asked = Clock::now();
    question.click(IDYES);
    waitFor([&] { return GetFileAttributesW(firstFile.c_str()) == INVALID_FILE_ATTRIBUTES; }, "the first file stays");
    const auto worked = Clock::now();
    if (running.exitCode() != 0)
        throw std::runtime_error("the program failed");
    return {asked - start, worked - asked};
}

} // namespace Benchmarks
