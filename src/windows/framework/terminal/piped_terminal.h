#pragma once

#include "platform/posix/terminal.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <optional>
#include <string>

namespace JobRunner
{

/// For tests: a terminal whose input is a given text and whose output can be read back. Neither is a real terminal.
class PipedTerminal
{
public:
    explicit PipedTerminal(const std::string& typed = {})
    {
        fill(typed);
        terminal_.emplace(input_[0], output_[1]);
    }

    ~PipedTerminal()
    {
        for (const int descriptor : {input_[0], output_[0], output_[1]})
            ::close(descriptor);
    }

    PipedTerminal(const PipedTerminal&) = delete;
    PipedTerminal& operator=(const PipedTerminal&) = delete;

    Platform::Terminal& terminal() { return *terminal_; }

    /// What was shown since the last time.
    std::string shown()
    {
        std::string text;
        std::array<char, 512> bytes{};
        for (ssize_t length = 0; (length = ::read(output_[0], bytes.data(), bytes.size())) > 0;)
            text.append(bytes.data(), static_cast<std::size_t>(length));
        return text;
    }

private:
    void fill(const std::string& typed)
    {
        if (::pipe(input_) != 0 || ::pipe(output_) != 0)
            std::abort();
        ::fcntl(output_[0], F_SETFL, O_NONBLOCK);
        if (::write(input_[1], typed.data(), typed.size()) != static_cast<ssize_t>(typed.size()))
            std::abort();
        ::close(input_[1]);
    }

    int input_[2] = {};
    int output_[2] = {};
    std::optional<Platform::Terminal> terminal_;
};

} // namespace JobRunner
