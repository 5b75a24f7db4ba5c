#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace StatisticsTesting
{

/// A program that runs beside the test; its end is waited for with the object's.
class StartedProgram
{
public:
    /// The arguments have no spaces. Throws std::runtime_error when it does not start.
    StartedProgram(const std::filesystem::path& program, const std::vector<std::string>& arguments);
    ~StartedProgram();
    StartedProgram(StartedProgram&&) noexcept;
    StartedProgram& operator=(StartedProgram&&) = delete;

    /// Waits for its end. -1 when it did not end by itself.
    int exitCode();
    /// Ends it at once, whatever it does.
    void kill();

private:
    struct Process;
    std::unique_ptr<Process> process_;
};

} // namespace StatisticsTesting
