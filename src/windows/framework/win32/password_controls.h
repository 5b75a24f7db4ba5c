#pragma once

#include "interfaces/panekit/controls.h"
#include "windows/framework/win32/background.h"

#include <vector>

#include <windows.h>

namespace JobRunner
{

/// Makes and keeps the custom controls of a password dialog, at provisional places. Thread of the dialog. The controls
/// belong to the dialog until `destroy` or the end of its window.
class PasswordControls
{
public:
    void attach(HWND dialog);
    ICopyDialogGradient* makeHeader(const wchar_t* text);
    ITextWithLinks* makeText(const wchar_t* text);
    /// A caption, fitted to its text.
    ITextWithLinks* makeCaption(const wchar_t* text);
    /// "Password" and "Key file".
    ITextWithPopupMenu* makeInputChoice();
    /// With the button that shows the text while it is held.
    IEditWithIconButtons* makePasswordEdit();
    IEditWithIconButtons* makeKeyFileEdit();
    IComboBox* makeList();

    /// For a dialog whose height changes, before each painting.
    void renewBackground();
    /// On `WM_ERASEBKGND`.
    void paint(HDC dc);
    /// The control's end, ahead of the dialog's.
    void destroy(ICustomControl* control);
    /// The end of all that are left, in the order of their making.
    void destroyAll();
    /// Leaves what is left to the end of the dialog's window.
    void detach();

private:
    template <class Interface> Interface* make(const wchar_t* classId);
    IEditWithIconButtons* makeEdit(const wchar_t* icon);

    HWND dialog_ = nullptr;
    DialogBackground background_;
    std::vector<ICustomControl*> controls_;
    /// Those among them that blend with the dialog: the texts, but not the header, the edits, the choice and the list.
    std::vector<ICustomControl*> texts_;
};

} // namespace JobRunner
