#include "linux/password_terminal.h"

#include <gtest/gtest.h>

namespace EndToEnd
{
namespace
{

const std::string NewPasswordHeader =
    "Please enter password or provide key file to encrypt selected files on your computer.";
const std::string FirstHeader = "Please enter password or provide key file to decrypt selected files on your computer.";
const std::string EndOfChoices = "Cancel (c): ";

std::vector<std::string> commandOf(PasswordTerminal::Command wrapper, const Path& job)
{
    wrapper.push_back(programUnderTest());
    wrapper.push_back(job);
    return wrapper;
}

} // namespace

PasswordTerminal::PasswordTerminal(const Path& job, Command wrapper) : terminal_(commandOf(std::move(wrapper), job)) {}

bool PasswordTerminal::asksForNewPassword()
{
    return expect(NewPasswordHeader) && expect(EndOfChoices);
}

void PasswordTerminal::newPassword(const std::string& password)
{
    newPassword(password, password);
}

void PasswordTerminal::newPassword(const std::string& password, const std::string& repeat)
{
    answer("p");
    hidden("Password: ", password);
    hidden("Repeat: ", repeat);
}

void PasswordTerminal::choose(char letter)
{
    answer(std::string(1, letter));
}

void PasswordTerminal::more()
{
    choose('m');
    EXPECT_TRUE(expect("<< Less (m) / " + EndOfChoices)) << shown();
}

void PasswordTerminal::algorithm(const std::string& numberOrName)
{
    choose('a');
    EXPECT_TRUE(expect("Algorithm (number or name, Enter for AES-256): ")) << shown();
    answer(numberOrName);
    EXPECT_TRUE(expect(EndOfChoices)) << shown();
}

void PasswordTerminal::riddle(const std::string& text)
{
    choose('r');
    EXPECT_TRUE(expect("New riddle (Enter for none, Ctrl+D to leave it): ")) << shown();
    answer(text);
    EXPECT_TRUE(expect(EndOfChoices)) << shown();
}

bool PasswordTerminal::asksForPassword()
{
    return expect(FirstHeader) && expect(EndOfChoices);
}

bool PasswordTerminal::asksToOpenDocument()
{
    return expect("Please enter password to open the document in the associated application.") &&
           expect("Origin: Decrypt, Open, Encrypt again (automatically).\n") && expect(EndOfChoices);
}

bool PasswordTerminal::asksForPasswordOf(const Path& file)
{
    // The path may be shortened ahead of the name.
    return expect("Provide Key for ") && expect("/" + file.filename().string() + "\n") && expect(EndOfChoices);
}

void PasswordTerminal::password(const std::string& password)
{
    answer("p");
    hidden("Password: ", password);
}

void PasswordTerminal::keyFile(const Path& file)
{
    answer("k");
    EXPECT_TRUE(expect("Path of the key file (Enter for none): ")) << shown();
    answer(file);
}

bool PasswordTerminal::tells(const Path& source, const std::string& message)
{
    return expect("Source: " + source.string() + "\n") && expect(message + "\n") && expect("Abort (a): ");
}

bool PasswordTerminal::refusesKeyFile(const std::string& message)
{
    const bool told =
        expect("Cannot load key file\nCannot load key file: " + message + "\n") && expect("Press Enter to continue ");
    answer("");
    return told;
}

int PasswordTerminal::exitCode(std::chrono::milliseconds limit)
{
    const int code = terminal_.exitCode(limit);
    for (const std::string& secret : secrets_)
        EXPECT_EQ(shown().find(secret), std::string::npos) << "a password was shown:\n" << shown();
    return code;
}

void PasswordTerminal::hidden(const std::string& question, const std::string& text)
{
    EXPECT_TRUE(expect(question)) << shown();
    answer(text);
    if (!text.empty())
        secrets_.push_back(text);
}

} // namespace EndToEnd
