#include "windows/decryption_password/terminal/decryption_password_view.h"

#include "windows/decryption_password/decryption_password_texts.h"
#include "windows/framework/password_dialog_texts.h"
#include "windows/framework/terminal/terminal_dialog.h"

#include <utility>

namespace JobRunner
{

namespace
{
constexpr wchar_t ProceedLetter = L'\r'; // an empty line, which no letter gives
}

void DecryptionPasswordView::setPassword(const std::wstring& text)
{
    password_.take(std::wstring(text));
    passwordMode_ = true;
}

void DecryptionPasswordView::setKeyFile(const std::wstring& path)
{
    keyFile_ = path;
    passwordMode_ = false;
}

void DecryptionPasswordView::doModal()
{
    TerminalDialog dialog(terminal_);
    dialog.print(PasswordDialogCaption);
    dialog.printLine(decryptionHeader(mode_, fileName_));
    dialog.printLine(OriginCaption + (L" " + decryptionOrigin(mode_)));
    if (!keyFile_.empty())
        dialog.printLine(L"Key file: " + keyFile_);
    while (!takeTurn(dialog))
    {
    }
}

void DecryptionPasswordView::showError(const std::wstring& message)
{
    TerminalDialog(terminal_).print(decryptionErrorTitle(passwordMode_) + (L": " + message));
}

bool DecryptionPasswordView::takeTurn(TerminalDialog& dialog)
{
    const bool canIgnore = decryptionCanIgnore(mode_);
    const std::wstring again = passwordMode_ ? L"Same password (Enter) / " : L"Same key file (Enter) / ";
    const std::wstring question = (isFilledIn() ? again : L"") + L"Password (p) / Key file (k)" +
                                  (canIgnore ? L" / Ignore (i)" : L"") + L" / Cancel (c): ";
    const wchar_t byDefault = isFilledIn() ? ProceedLetter : passwordMode_ ? L'p' : L'k';
    switch (dialog.choose(question, canIgnore ? L"pkic" : L"pkc", byDefault).value_or(L'c'))
    {
    case L'p':
        return readPassword(dialog);
    case L'k':
        return pickKeyFile(dialog);
    case L'i':
        onIgnore();
        return true;
    case L'c':
        return cancel();
    default:
        return onOk();
    }
}

bool DecryptionPasswordView::readPassword(TerminalDialog& dialog)
{
    std::optional<std::wstring> password = dialog.readHidden(L"Password: ");
    if (!password)
        return cancel();
    password_.take(std::move(*password));
    passwordMode_ = true;
    return onOk();
}

bool DecryptionPasswordView::pickKeyFile(TerminalDialog& dialog)
{
    passwordMode_ = false;
    dialog.lend([this] { onBrowseKeyFile(); });
    return onOk();
}

bool DecryptionPasswordView::cancel()
{
    onCancel();
    return true;
}

} // namespace JobRunner
