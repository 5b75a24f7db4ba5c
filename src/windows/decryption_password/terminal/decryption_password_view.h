#pragma once

#include "windows/decryption_password/i_decryption_password_view.h"
#include "windows/framework/secret_text.h"

#include <string>

namespace Platform
{
class Terminal;
}

namespace JobRunner
{

class TerminalDialog;

/// The decryption password dialog in the terminal: a line of choices, each with its letter, until a password or a key
/// file is accepted, or the user ignores or cancels. The password is typed unseen. The end of the input answers
/// cancel. An empty line proceeds with what has been filled in, when there is something.
class DecryptionPasswordView final : public IDecryptionPasswordView
{
public:
    /// The terminal is not owned and outlives the view.
    explicit DecryptionPasswordView(Platform::Terminal& terminal) : terminal_(terminal) {}

    void setPassword(const std::wstring& text) override;
    void setKeyFile(const std::wstring& path) override;
    void setDecryptionMode(int mode) override { mode_ = mode; }
    /// Shows nothing: the header follows from mode and file name when the dialog opens.
    void setHeaderText(const std::wstring&) override {}
    void setFileName(const std::wstring& text) override { fileName_ = text; }
    void doModal() override;
    std::wstring getPassword() override { return password_.text(); }
    std::wstring getKeyFile() override { return keyFile_; }
    bool isPasswordMode() override { return passwordMode_; }
    void showError(const std::wstring& message) override;

private:
    // Each true when the dialog has ended.
    bool takeTurn(TerminalDialog& dialog);
    bool readPassword(TerminalDialog& dialog);
    bool pickKeyFile(TerminalDialog& dialog);
    bool cancel();

    bool isFilledIn() const { return passwordMode_ ? !password_.empty() : !keyFile_.empty(); }

    Platform::Terminal& terminal_;
    bool passwordMode_ = true;
    SecretText password_;
    std::wstring keyFile_;
    int mode_ = DecryptionDeletesOriginals;
    std::wstring fileName_;
};

} // namespace JobRunner
