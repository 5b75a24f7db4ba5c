#include "windows/text_editors/win32/text_editor_dialog.h"

#include "resources/resource.h"
#include "windows/framework/win32/dialog.h"

namespace JobRunner
{

namespace
{

std::wstring textOf(HWND window)
{
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

} // namespace

bool TextEditorDialog::doModal()
{
    // A dialog that cannot be made answers as one that was cancelled.
    return DialogBoxParamW(resourceModule(), MAKEINTRESOURCEW(templateId_), GetActiveWindow(), procedure,
                           reinterpret_cast<LPARAM>(this)) == IDC_PROCEED;
}

INT_PTR CALLBACK TextEditorDialog::procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto* const self = viewOf<TextEditorDialog>(dialog, message, lParam);
    if (!self)
        return FALSE;
    if (message == WM_COMMAND)
        return self->onCommand(dialog, LOWORD(wParam));
    if (message != WM_INITDIALOG)
        return FALSE;
    self->onInit(dialog);
    return TRUE;
}

INT_PTR TextEditorDialog::onCommand(HWND dialog, int id)
{
    switch (id)
    {
    case IDC_PROCEED:
        takeInput(dialog);
        return EndDialog(dialog, IDC_PROCEED);
    case IDC_CANCEL:
        return EndDialog(dialog, IDC_CANCEL);
    default:
        return FALSE;
    }
}

void TextEditorDialog::onInit(HWND dialog)
{
    POINT pointer{};
    GetCursorPos(&pointer);
    SetWindowPos(dialog, nullptr, pointer.x, pointer.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    // An edit takes 30,000 characters by itself; neither text has a limit.
    SendDlgItemMessageW(dialog, IDC_EDITOR_TEXT, EM_SETLIMITTEXT, 0, 0);
    SetDlgItemTextW(dialog, IDC_EDITOR_TEXT, text.c_str());
}

void TextEditorDialog::takeInput(HWND dialog)
{
    if (checkBox_ != 0)
        checked = SendDlgItemMessageW(dialog, checkBox_, BM_GETCHECK, 0, 0) == BST_CHECKED;
    text = textOf(GetDlgItem(dialog, IDC_EDITOR_TEXT));
}

} // namespace JobRunner
