#include "windows/encryption_password/terminal/encryption_password_view.h"

#include "windows/encryption_password/terminal/algorithm_prompt.h"
#include "windows/framework/password_dialog_texts.h"
#include "windows/framework/terminal/terminal_dialog.h"
#include "windows/text_editors/edit_text.h"
#include "windows/text_editors/terminal/riddle_window_view.h"
#include "windows/text_editors/terminal/sfx_comment_window_view.h"

#include <utility>

namespace JobRunner
{

bool EncryptionPasswordView::doModal()
{
    TerminalDialog dialog(terminal_);
    state_.changeInputMode(PasswordInput);
    state_.section = SectionCollapsed;
    dialog.print(PasswordDialogCaption);
    dialog.print(EncryptionText::Header);
    printDestiny(dialog);
    Turn turn = Turn::GoOn;
    while (turn == Turn::GoOn)
        turn = takeTurn(dialog);
    return turn == Turn::Confirmed;
}

void EncryptionPasswordView::showError(const std::wstring& message, bool)
{
    TerminalDialog(terminal_).print(EncryptionText::ErrorTitle + (L": " + message));
}

EncryptionPasswordView::Turn EncryptionPasswordView::takeTurn(TerminalDialog& dialog)
{
    const std::optional<wchar_t> choice = dialog.choose(question(), letters(), state_.passwordMode() ? L'p' : L'k');
    switch (choice.value_or(L'c'))
    {
    case L'p':
        return readPasswords(dialog);
    case L'k':
        return pickKeyFile(dialog);
    case L'o':
        state_.destiny = nextDestiny(state_.destiny);
        printDestiny(dialog);
        return Turn::GoOn;
    case L'm':
        switchSection(dialog);
        return Turn::GoOn;
    case L'c':
        return Turn::Cancelled;
    default:
        changeMore(dialog, *choice);
        return Turn::GoOn;
    }
}

EncryptionPasswordView::Turn EncryptionPasswordView::readPasswords(TerminalDialog& dialog)
{
    state_.changeInputMode(PasswordInput);
    std::optional<std::wstring> password = dialog.readHidden(L"Password: ");
    if (!password)
        return Turn::Cancelled;
    state_.password.take(std::move(*password));
    std::optional<std::wstring> repeat = dialog.readHidden(EncryptionText::RepeatCaption + std::wstring(L" "));
    if (!repeat)
        return Turn::Cancelled;
    state_.repeat.take(std::move(*repeat));
    onPasswordsChanged();
    return onOk() ? Turn::Confirmed : Turn::GoOn;
}

EncryptionPasswordView::Turn EncryptionPasswordView::pickKeyFile(TerminalDialog& dialog)
{
    state_.changeInputMode(KeyFileInput);
    dialog.lend([this] { onBrowseKeyFile(); });
    return onOk() ? Turn::Confirmed : Turn::GoOn;
}

void EncryptionPasswordView::switchSection(TerminalDialog& dialog)
{
    state_.section = state_.otherSection();
    if (!state_.sectionOpen())
        return;
    printAlgorithm(dialog);
    printRiddle(dialog);
}

/// The choices that are there while the section is open.
void EncryptionPasswordView::changeMore(TerminalDialog& dialog, wchar_t choice)
{
    if (choice == L'a')
    {
        state_.algorithm = askForAlgorithm(dialog, state_.algorithm);
        printAlgorithm(dialog);
    }
    else if (choice == L'r')
    {
        editRiddle(*new RiddleWindowView(terminal_), state_.riddle);
        printRiddle(dialog);
    }
    else
        editSfxComment(*new SfxCommentWindowView(terminal_), state_.sfxComment, state_.sfxCommentDefault);
}

std::wstring EncryptionPasswordView::question() const
{
    std::wstring text = L"Password (p) / Key file (k) / Change origin (o) / ";
    if (state_.sectionOpen())
        text += selfExtracting_ ? L"Algorithm (a) / Riddle (r) / Sfx Comment (s) / " : L"Algorithm (a) / Riddle (r) / ";
    return text + state_.sectionButton() + L" (m) / Cancel (c): ";
}

std::wstring EncryptionPasswordView::letters() const
{
    if (!state_.sectionOpen())
        return L"pkomc";
    return selfExtracting_ ? L"pkomcars" : L"pkomcar";
}

void EncryptionPasswordView::printDestiny(TerminalDialog& dialog) const
{
    dialog.printLine(OriginCaption + (L" " + destinySentence(state_.destiny)));
}

void EncryptionPasswordView::printAlgorithm(TerminalDialog& dialog) const
{
    dialog.printLine(EncryptionText::AlgorithmCaption + (L" " + algorithmName(state_.algorithm)));
}

void EncryptionPasswordView::printRiddle(TerminalDialog& dialog) const
{
    dialog.printLine(EncryptionText::RiddleCaption + (L" " + (state_.riddle.empty() ? L"none" : state_.riddle)));
}

} // namespace JobRunner
