#pragma once

#include "linux/terminal.h"
#include "scenarios/sample_folder.h"

namespace EndToEnd
{

/// One job of the program with passwords, and what its user types. Each step first waits until the program asks for it
/// and tells whether it did; a step that comes too early or too late is a failure of the test that takes it.
class PasswordTerminal
{
public:
    using Command = std::vector<std::string>;

    /// Starts the job. `wrapper` is a command that runs the program in its turn, element 0 with its path.
    explicit PasswordTerminal(const Path& job, Command wrapper = {});

    // The window before an encryption.
    bool asksForNewPassword();
    void newPassword(const std::string& password);
    /// The same with a second password of its own.
    void newPassword(const std::string& password, const std::string& repeat);
    void choose(char letter);
    /// Opens the section with algorithm, riddle and comment, and chooses there.
    void more();
    void algorithm(const std::string& numberOrName);
    void riddle(const std::string& text);

    // The window of a decryption.
    /// The first question, which names no file.
    bool asksForPassword();
    /// The first question behind a double click.
    bool asksToOpenDocument();
    /// A later one, which names the file.
    bool asksForPasswordOf(const Path& file);
    void password(const std::string& password);
    /// For both windows.
    void keyFile(const Path& file);
    void ignore() { choose('i'); }
    void cancel() { choose('c'); }

    // The window of a file's problem.
    bool tells(const Path& source, const std::string& message);
    void tryAgain() { answer("t"); }
    void skip() { answer("s"); }
    void abort() { answer("a"); }

    /// A message box with the cause that a key file was refused for, and Enter to it.
    bool refusesKeyFile(const std::string& message);

    bool expect(const std::string& text) { return terminal_.expect(text); }
    void answer(const std::string& line) { terminal_.send(line + "\n"); }
    void sendEnd() { terminal_.sendEnd(); }
    /// The key of Ctrl and that letter.
    void control(char letter) { terminal_.send(std::string(1, static_cast<char>(letter & 0x1F))); }
    void key(char letter) { terminal_.send(std::string(1, letter)); }

    /// The exit code, as Terminal::exitCode. Fails the test when a text shows that was typed hidden.
    int exitCode(std::chrono::milliseconds limit = EndLimit);
    const std::string& shown() const { return terminal_.shown(); }

    static constexpr std::chrono::milliseconds EndLimit{120000};

private:
    void hidden(const std::string& question, const std::string& text);

    Terminal terminal_;
    std::vector<std::string> secrets_;
};

} // namespace EndToEnd
