#include "windows/framework/win32/password_controls.h"

#include "windows/framework/password_dialog_texts.h"
#include "windows/framework/win32/controls.h"
#include "windows/framework/win32/dialog.h"

#include <algorithm>

namespace JobRunner
{

namespace
{
// Where a control is made; the layout places it later.
constexpr int ProvisionalWidth = 100;
constexpr int ProvisionalHeight = 50;
} // namespace

void PasswordControls::attach(HWND dialog)
{
    dialog_ = dialog;
    background_.prepare(dialog);
    SetWindowLongPtrW(dialog, GWL_STYLE, GetWindowLongPtrW(dialog, GWL_STYLE) | WS_CLIPCHILDREN);
}

template <class Interface> Interface* PasswordControls::make(const wchar_t* classId)
{
    auto* const control = createControlAs<Interface>(classId, dialog_, 0, 0, ProvisionalWidth, ProvisionalHeight);
    controls_.push_back(control);
    return control;
}

ICopyDialogGradient* PasswordControls::makeHeader(const wchar_t* text)
{
    RECT client{};
    GetClientRect(dialog_, &client);
    auto* const header =
        createControlAs<ICopyDialogGradient>(ControlClass::CopyDialogGradient, dialog_, 0, 0,
                                             static_cast<int>(client.right), static_cast<int>(client.bottom));
    controls_.push_back(header);
    header->setIcon(resourceModule(), L"ZELICON32.PNG");
    header->setText(text);
    return header;
}

ITextWithLinks* PasswordControls::makeText(const wchar_t* text)
{
    auto* const control = make<ITextWithLinks>(ControlClass::TextWithLinks);
    texts_.push_back(control);
    control->setText(text);
    return control;
}

ITextWithLinks* PasswordControls::makeCaption(const wchar_t* text)
{
    ITextWithLinks* const caption = makeText(text);
    caption->setCaptionStyle(true);
    caption->fitToContent();
    return caption;
}

ITextWithPopupMenu* PasswordControls::makeInputChoice()
{
    auto* const choice = make<ITextWithPopupMenu>(ControlClass::TextWithPopupMenu);
    for (const InputChoiceItem& item : InputChoices)
        choice->addItem(item.text, item.secondText);
    return choice;
}

IEditWithIconButtons* PasswordControls::makeEdit(const wchar_t* icon)
{
    auto* const edit = make<IEditWithIconButtons>(ControlClass::EditWithIconButtons);
    edit->addIconButton(resourceModule(), icon);
    return edit;
}

IEditWithIconButtons* PasswordControls::makePasswordEdit()
{
    IEditWithIconButtons* const edit = makeEdit(L"SHOWPASS.PNG");
    edit->maskText();
    return edit;
}

IEditWithIconButtons* PasswordControls::makeKeyFileEdit()
{
    return makeEdit(L"DOTS.PNG");
}

IComboBox* PasswordControls::makeList()
{
    return make<IComboBox>(ControlClass::ComboBox);
}

void PasswordControls::renewBackground()
{
    background_.prepare(dialog_);
}

void PasswordControls::paint(HDC dc)
{
    background_.paint(dialog_, dc, texts_);
}

void PasswordControls::destroy(ICustomControl* control)
{
    std::erase(controls_, control);
    std::erase(texts_, control);
    control->destroy();
}

void PasswordControls::destroyAll()
{
    for (ICustomControl* const control : controls_)
        control->destroy();
    detach();
}

void PasswordControls::detach()
{
    controls_.clear();
    texts_.clear();
    background_.free();
    dialog_ = nullptr;
}

} // namespace JobRunner
