#pragma once

#include <string>

#include <windows.h>

namespace JobRunner
{

/// A small pop-up without a caption that edits one text. It opens with its top left corner at the mouse pointer and
/// may therefore lie partly outside the screen, which is intended. Thread of the caller.
class TextEditorDialog
{
public:
    /// `templateId` has the edit, OK and Cancel; and the box when `checkBox` is not 0.
    TextEditorDialog(int templateId, int checkBox) : templateId_(templateId), checkBox_(checkBox) {}

    /// True when the user confirmed; only then do `text` and `checked` take what was entered.
    bool doModal();

    std::wstring text;
    bool checked = false;

private:
    static INT_PTR CALLBACK procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
    INT_PTR onCommand(HWND dialog, int id);
    void onInit(HWND dialog);
    void takeInput(HWND dialog);

    const int templateId_;
    const int checkBox_;
};

} // namespace JobRunner
