#pragma once

#include <chrono>
#include <string>
#include <sys/types.h>
#include <vector>

namespace EndToEnd
{

/// A program on a terminal of its own: reads what it shows, types for its user, waits for its end. One thread.
class Terminal
{
public:
    /// Starts the program; element 0 is its path. Throws std::runtime_error when no terminal can be had.
    explicit Terminal(const std::vector<std::string>& command);
    /// Ends a program that is still running.
    ~Terminal();
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    /// True as soon as `text` has been shown behind the last text that was found, false when the time is over or the
    /// program has ended without showing it. A line break of the terminal counts as one '\n'.
    bool expect(const std::string& text, std::chrono::milliseconds limit = DefaultLimit);
    void send(const std::string& keys);
    /// The end of the input, as Ctrl+D gives it.
    void sendEnd();
    /// The exit code; 128 + n after signal n; -1 when the program has not ended in time.
    int exitCode(std::chrono::milliseconds limit = DefaultLimit);
    /// All that was shown so far.
    const std::string& shown() const { return shown_; }

    static constexpr std::chrono::milliseconds DefaultLimit{20000};

private:
    bool readMore(std::chrono::milliseconds limit);

    int terminal_ = -1;
    pid_t process_ = -1;
    std::string shown_;
    std::size_t found_ = 0;
};

} // namespace EndToEnd
