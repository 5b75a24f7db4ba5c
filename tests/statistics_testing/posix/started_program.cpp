#include "statistics_testing/started_program.h"

#include "platform/posix/start_program.h"

#include <csignal>
#include <stdexcept>
#include <sys/wait.h>

namespace StatisticsTesting
{

struct StartedProgram::Process
{
    pid_t id = -1;
    bool isOver = false;
    int code = -1;

    ~Process() { wait(); }
    void wait()
    {
        int status = 0;
        if (!isOver && ::waitpid(id, &status, 0) == id && WIFEXITED(status))
            code = WEXITSTATUS(status);
        isOver = true;
    }
};

StartedProgram::StartedProgram(const std::filesystem::path& program, const std::vector<std::string>& arguments)
{
    std::vector<std::string> all{program.string()};
    all.insert(all.end(), arguments.begin(), arguments.end());
    const pid_t id = Platform::startProgram(program.string(), all);
    if (id < 0)
        throw std::runtime_error("the program does not start");
    process_.reset(new Process{id});
}

StartedProgram::~StartedProgram() = default;
StartedProgram::StartedProgram(StartedProgram&&) noexcept = default;

int StartedProgram::exitCode()
{
    process_->wait();
    return process_->code;
}

void StartedProgram::kill()
{
    if (!process_->isOver)
        ::kill(process_->id, SIGKILL);
}

} // namespace StatisticsTesting
