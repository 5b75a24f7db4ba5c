#include "start/measured_start.h"

#include <array>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <stdexcept>
#include <string>
#include <sys/inotify.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Benchmarks
{

namespace
{

constexpr int LimitMilliseconds = 20000;

void expect(bool condition, const char* failure)
{
    if (!condition)
        throw std::runtime_error(failure);
}

/// The program with pipes for its input and its output.
class PipedProgram
{
public:
    PipedProgram(const std::string& program, const std::string& job)
    {
        expect(pipe2(input_, O_CLOEXEC) == 0 && pipe2(output_, O_CLOEXEC) == 0, "no pipes");
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, input_[0], STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&actions, output_[1], STDOUT_FILENO);
        char* const arguments[] = {const_cast<char*>(program.c_str()), const_cast<char*>(job.c_str()), nullptr};
        const int failure = posix_spawn(&process_, program.c_str(), &actions, nullptr, arguments, environ);
        posix_spawn_file_actions_destroy(&actions);
        expect(failure == 0, "the program does not start");
        close(output_[1]);
    }

    ~PipedProgram()
    {
        for (const int descriptor : {input_[0], input_[1], output_[0]})
            close(descriptor);
    }

    PipedProgram(const PipedProgram&) = delete;
    PipedProgram& operator=(const PipedProgram&) = delete;

    void waitFor(const std::string& text)
    {
        std::string shown;
        while (shown.find(text) == std::string::npos)
            expect(readMore(shown), "the program does not ask");
    }

    void type(const std::string& text)
    {
        expect(write(input_[1], text.data(), text.size()) == static_cast<ssize_t>(text.size()), "no input");
    }

    void waitForEnd()
    {
        std::string rest;
        while (readMore(rest))
        {
        }
        int status = 0;
        expect(waitpid(process_, &status, 0) == process_ && status == 0, "the program failed");
    }

private:
    bool readMore(std::string& shown)
    {
        std::array<char, 512> bytes{};
        pollfd waiting{output_[0], POLLIN, 0};
        expect(poll(&waiting, 1, LimitMilliseconds) == 1, "the program hangs");
        const ssize_t length = read(output_[0], bytes.data(), bytes.size());
        if (length > 0)
            shown.append(bytes.data(), static_cast<std::size_t>(length));
        return length > 0;
    }

    int input_[2] = {};
    int output_[2] = {};
    pid_t process_ = -1;
};

/// Told by the system when the file goes, under its name or by taking another one.
class RemovalWatch
{
public:
    explicit RemovalWatch(const std::filesystem::path& file) : file_(file), watch_(inotify_init1(IN_CLOEXEC))
    {
        expect(inotify_add_watch(watch_, file.parent_path().c_str(), IN_DELETE | IN_MOVED_FROM) >= 0, "no watch");
    }
    ~RemovalWatch() { close(watch_); }
    RemovalWatch(const RemovalWatch&) = delete;
    RemovalWatch& operator=(const RemovalWatch&) = delete;

    void wait()
    {
        std::array<char, 4096> events{};
        while (access(file_.c_str(), F_OK) == 0)
        {
            pollfd waiting{watch_, POLLIN, 0};
            expect(poll(&waiting, 1, LimitMilliseconds) == 1, "the first file stays");
            expect(read(watch_, events.data(), events.size()) > 0, "no events");
        }
    }

private:
    const std::filesystem::path file_;
    const int watch_;
};

} // namespace

MeasuredStart measureStart(const std::filesystem::path& program, const std::filesystem::path& job,
                           const std::filesystem::path& firstFile)
{
    RemovalWatch watch(firstFile);
    const auto start = Clock::now();
    PipedProgram running(program, job);
    running.waitFor("[y/n] ");
    const auto asked = Clock::now();
    running.type("y\n");
    watch.wait();
    const auto worked = Clock::now();
    running.waitForEnd();
    return {asked - start, worked - asked};
}

} // namespace Benchmarks
