#pragma once

#include "platform/posix/terminal.h"

#include <optional>
#include <string>

namespace JobRunner
{

/// The terminal for the time of one dialog. One thread only.
class TerminalDialog
{
public:
    /// The terminal is not owned and outlives the dialog.
    explicit TerminalDialog(Platform::Terminal& terminal) : terminal_(terminal), prompt_(std::in_place, terminal) {}

    /// Line breaks are shown as they stand.
    void print(const std::wstring& text) { prompt_->print(text + L'\n'); }
    /// Stays on its line, whatever it is made of.
    void printLine(const std::wstring& text);

    // Nothing at the end of the input.
    std::optional<std::wstring> readLine(const std::wstring& question) { return prompt_->readLine(question); }
    std::optional<std::wstring> readHidden(const std::wstring& question) { return prompt_->readHidden(question); }
    /// Asks until the answer is one of the letters, in either case. An empty line gives `byDefault`.
    std::optional<wchar_t> choose(const std::wstring& question, const std::wstring& letters, wchar_t byDefault);

    /// Gives the terminal away while `work` runs, so that another thread can ask.
    template <class Work> void lend(Work work)
    {
        prompt_.reset();
        work();
        prompt_.emplace(terminal_);
    }

private:
    Platform::Terminal& terminal_;
    std::optional<Platform::Terminal::Prompt> prompt_;
};

} // namespace JobRunner
