#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace Platform
{

/// The terminal that the program was started in: status lines that redraw themselves, prompts that have the terminal
/// for themselves, and single keys. With no terminal on the input it reads lines; the end of the input is an answer of
/// its own. All shown text is made harmless first (`displayText`). Safe on any thread.
class Terminal
{
public:
    /// Takes two open descriptors and does not close them.
    Terminal(int input, int output) : input_(input), output_(output) {}

    bool inputIsTerminal() const;
    bool outputIsTerminal() const;

    /// Shows these lines as the last ones of the output, in the place of those before. While a prompt is open they are
    /// kept and shown behind it. Nothing is shown when the output is no terminal.
    void drawStatus(const std::vector<std::wstring>& lines);
    void clearStatus();

    /// Waits for one key at most that long. Nothing when no key came, while a prompt is open, or when the input is no
    /// terminal of ours; the time passes all the same. Keys that send more than one character are left out.
    std::optional<wchar_t> pollKey(std::chrono::milliseconds timeout);

    /// Has the terminal from construction to destruction; another thread's prompt waits for it, and a prompt inside a
    /// prompt of the same thread is part of it.
    class Prompt
    {
    public:
        explicit Prompt(Terminal& terminal);
        ~Prompt();
        Prompt(const Prompt&) = delete;
        Prompt& operator=(const Prompt&) = delete;

        void print(const std::wstring& text);
        /// One line without its end, nothing at the end of the input.
        std::optional<std::wstring> readLine(const std::wstring& prompt);
        /// The same without showing what is typed.
        std::optional<std::wstring> readHidden(const std::wstring& prompt);

    private:
        Terminal& terminal_;
    };

private:
    void openPrompt();
    void closePrompt();
    void write(const std::string& bytes);
    void eraseStatus();
    void showStatus();
    int columns() const;
    std::optional<std::wstring> readLine(const std::wstring& prompt, bool hidden);
    bool readBytes(std::string& line);
    std::optional<wchar_t> readKey();
    bool promptWanted() const { return promptDepth_ > 0 || waitingPrompts_ > 0; }

    const int input_;
    const int output_;
    std::mutex lock_;
    std::condition_variable changed_;
    std::vector<std::wstring> status_;
    std::size_t shownLines_ = 0;
    std::thread::id promptOwner_;
    int promptDepth_ = 0;
    int waitingPrompts_ = 0;
    bool polling_ = false;
};

/// The terminal on the standard input and output.
Terminal& terminal();

} // namespace Platform
