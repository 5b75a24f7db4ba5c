#pragma once

#include "windows/encryption_password/encryption_password_state.h"
#include "windows/encryption_password/i_encryption_password_view.h"

#include <string>

namespace Platform
{
class Terminal;
}

namespace JobRunner
{

class TerminalDialog;

/// The encryption password dialog in the terminal: a line of choices, each with its letter, until a password or a key
/// file is given that is accepted. The password is typed twice, unseen. The end of the input answers cancel.
class EncryptionPasswordView final : public IEncryptionPasswordView
{
public:
    /// The terminal is not owned and outlives the view.
    EncryptionPasswordView(bool selfExtracting, Platform::Terminal& terminal)
        : selfExtracting_(selfExtracting), terminal_(terminal)
    {
    }

    void setDestiny(int destiny) override { state_.destiny = destiny; }
    void setKeyFile(const std::wstring& path) override { state_.keyFile = path; }
    void setSfxComment(const std::wstring& text) override { state_.sfxComment = text; }
    bool doModal() override;
    std::wstring getPassword() override { return state_.password.text(); }
    std::wstring getPasswordRepeat() override { return state_.repeat.text(); }
    std::wstring getKeyFile() override { return state_.keyFile; }
    int getDestiny() override { return state_.destiny; }
    std::wstring getRiddle() override { return state_.riddle; }
    int getAlgorithm() override { return state_.algorithm; }
    std::wstring getSfxComment() override { return state_.sfxComment; }
    bool isSfxCommentDefault() override { return state_.sfxCommentDefault; }
    bool isPasswordMode() override { return state_.passwordMode(); }
    void showError(const std::wstring& message, bool onRepeat) override;
    /// Shows nothing: the user hears of it when both are typed.
    void setRepeatMismatch(bool) override {}

private:
    enum class Turn
    {
        GoOn,
        Confirmed,
        Cancelled,
    };

    Turn takeTurn(TerminalDialog& dialog);
    Turn readPasswords(TerminalDialog& dialog);
    Turn pickKeyFile(TerminalDialog& dialog);
    void switchSection(TerminalDialog& dialog);
    void changeMore(TerminalDialog& dialog, wchar_t choice);
    std::wstring question() const;
    std::wstring letters() const;
    void printDestiny(TerminalDialog& dialog) const;
    void printAlgorithm(TerminalDialog& dialog) const;
    void printRiddle(TerminalDialog& dialog) const;

    const bool selfExtracting_;
    Platform::Terminal& terminal_;
    EncryptionPasswordState state_;
};

} // namespace JobRunner
