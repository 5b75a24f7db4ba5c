#include "windows/encryption_password/win32/encryption_password_view.h"

#include "windows/framework/password_dialog_texts.h"
#include "windows/framework/win32/control_messages.h"
#include "windows/framework/win32/dialog.h"
#include "windows/framework/win32/placement.h"
#include "windows/text_editors/edit_text.h"
#include "windows/text_editors/win32/riddle_window_view.h"
#include "windows/text_editors/win32/sfx_comment_window_view.h"

namespace JobRunner
{

namespace
{

/// Posted by the dialog to itself: the controls take the focus only once the dialog is up.
constexpr UINT FocusPassword = WM_USER + 100;
/// No item of the dialog sends it; accepted, and nothing happens.
constexpr int SilentCommand = 110;
constexpr COLORREF MismatchColour = RGB(255, 0, 0);
constexpr COLORREF TextColour = RGB(0, 0, 0);

} // namespace

void EncryptionPasswordView::setKeyFile(const std::wstring& path)
{
    state_.keyFile = path;
    if (dialog_)
        keyFile_->setText(path.c_str());
}

bool EncryptionPasswordView::doModal()
{
    return DialogBoxParamW(resourceModule(), MAKEINTRESOURCEW(IDD_ENCRYPTION_PASSWORD), GetActiveWindow(), procedure,
                           reinterpret_cast<LPARAM>(this)) == IDC_PROCEED;
}

void EncryptionPasswordView::showError(const std::wstring& message, bool onRepeat)
{
    (onRepeat ? repeat_ : password_)->showBalloon(EncryptionText::ErrorTitle, message.c_str());
}

void EncryptionPasswordView::setRepeatMismatch(bool mismatch)
{
    repeat_->setTextColor(mismatch ? MismatchColour : TextColour);
}

INT_PTR CALLBACK EncryptionPasswordView::procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto* const self = viewOf<EncryptionPasswordView>(dialog, message, lParam);
    if (self && message == WM_INITDIALOG)
        self->dialog_ = dialog;
    return self && self->dialog_ ? self->onMessage(message, wParam, lParam) : FALSE;
}

INT_PTR EncryptionPasswordView::onMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message)
    {
    case WM_INITDIALOG:
        onInit();
        return TRUE;
    case FocusPassword:
        focusControl(*password_);
        return TRUE;
    case WM_ERASEBKGND:
        controls_.renewBackground();
        controls_.paint(reinterpret_cast<HDC>(wParam));
        SetWindowLongPtrW(dialog_, DWLP_MSGRESULT, 1);
        return TRUE;
    case WM_COMMAND:
        return onCommand(LOWORD(wParam));
    case WM_DESTROY:
        onDestroy();
        return TRUE;
    default:
        return onControlMessage(message, wParam, lParam) ? TRUE : FALSE;
    }
}

INT_PTR EncryptionPasswordView::onCommand(int id)
{
    switch (id)
    {
    case IDC_PROCEED:
        readEdits();
        if (onOk())
            EndDialog(dialog_, IDC_PROCEED);
        return TRUE;
    case IDC_CANCEL: // the close box too
        return EndDialog(dialog_, IDC_CANCEL);
    case IDC_SECTION:
        setSectionState(state_.otherSection());
        return TRUE;
    case SilentCommand:
        return TRUE;
    default:
        return FALSE;
    }
}

bool EncryptionPasswordView::onControlMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    const ControlMessages& messages = controlMessages();
    if (message == messages.itemChanged)
    {
        setInputMode(EncryptionPasswordState::modeOfItem(static_cast<int>(lParam)));
        layOut();
    }
    else if (message == messages.buttonPressed || message == messages.buttonClicked)
    {
        // One of a control that is none of the edits is ignored, and counts as handled.
        if (lParam == 0)
            onEditButton(static_cast<int>(wParam), message == messages.buttonPressed);
    }
    else if (message == messages.textChanged)
        onTextChanged(static_cast<int>(wParam));
    else if (message == messages.hyperlinkClicked)
        onLink(reinterpret_cast<const wchar_t*>(lParam));
    else if (message == messages.selectionChanged)
        onAlgorithmChosen();
    else
        return false;
    return true;
}

void EncryptionPasswordView::onEditButton(int control, bool pressed)
{
    for (IEditWithIconButtons* const edit : {password_, repeat_})
        if (control == edit->getControlId())
            pressed ? edit->unmaskText() : edit->maskText();
    if (pressed && control == keyFile_->getControlId())
    {
        state_.keyFile = keyFile_->getText(); // kept, though the file dialog is not told of it
        onBrowseKeyFile();
    }
}

void EncryptionPasswordView::onTextChanged(int control)
{
    if (control != password_->getControlId() && control != repeat_->getControlId())
        return;
    state_.password.take(password_->getText());
    state_.repeat.take(repeat_->getText());
    onPasswordsChanged();
}

void EncryptionPasswordView::onLink(const wchar_t* href)
{
    switch (linkOf(href))
    {
    case EncryptionLink::Destiny:
        state_.destiny = nextDestiny(state_.destiny);
        origin_->setText(destinyText(state_.destiny).c_str());
        break;
    case EncryptionLink::Algorithm:
        showAlgorithmList(true);
        algorithmList_->showDropDown();
        break;
    case EncryptionLink::Riddle:
        if (editRiddle(*new RiddleWindowView, state_.riddle))
            updateLinks();
        break;
    case EncryptionLink::SfxComment:
        if (editSfxComment(*new SfxCommentWindowView, state_.sfxComment, state_.sfxCommentDefault))
            updateLinks();
        break;
    case EncryptionLink::None:
        break;
    }
}

void EncryptionPasswordView::onAlgorithmChosen()
{
    state_.algorithm = algorithmList_->getCurrentItem();
    showAlgorithmList(false);
    updateLinks();
}

void EncryptionPasswordView::onInit()
{
    state_.section = 0;
    state_.inputMode = 0;
    centreDialog(dialog_);
    controls_.attach(dialog_);
    makeControls();
    origin_->setText(destinyText(state_.destiny).c_str());
    keyFile_->setText(state_.keyFile.c_str());
    updateLinks();
    layOut();
    setInputMode(PasswordInput);
    setSectionState(SectionCollapsed);
    PostMessageW(dialog_, FocusPassword, 0, 0);
}

void EncryptionPasswordView::onDestroy()
{
    controls_.destroyAll();
    dialog_ = nullptr;
}

void EncryptionPasswordView::makeControls()
{
    rows_.clear();
    header_ = controls_.makeHeader(EncryptionText::Header);
    header_->setHeight(header_->heightForWidth(boxOf(*header_).width));
    originCaption_ = controls_.makeCaption(OriginCaption);
    origin_ = controls_.makeText(L"");
    inputChoice_ = controls_.makeInputChoice();
    repeatCaption_ = controls_.makeCaption(EncryptionText::RepeatCaption);
    password_ = controls_.makePasswordEdit();
    repeat_ = controls_.makePasswordEdit();
    keyFile_ = controls_.makeKeyFileEdit();
    algorithmLink_ = makeRow(EncryptionText::AlgorithmCaption);
    riddleLink_ = makeRow(EncryptionText::RiddleCaption);
    if (selfExtracting_)
        commentLink_ = makeRow(EncryptionText::SfxCommentCaption);
    algorithmList_ = controls_.makeList();
    showControl(*algorithmList_, false);
    algorithmListShown_ = false;
    for (const int id : Buttons)
        makeLastTabStop(dialog_, id);
}

ITextWithLinks* EncryptionPasswordView::makeRow(const wchar_t* caption)
{
    ITextWithLinks* const text = controls_.makeCaption(caption);
    rows_.push_back({text, controls_.makeText(L"")});
    return rows_.back().value;
}

void EncryptionPasswordView::readEdits()
{
    state_.password.take(password_->getText());
    state_.repeat.take(repeat_->getText());
    state_.keyFile = keyFile_->getText();
}

void EncryptionPasswordView::setInputMode(int mode)
{
    if (!state_.changeInputMode(mode))
        return;
    inputChoice_->setCurrentItem(state_.inputItem());
    const bool password = state_.passwordMode();
    showControl(*password_, password);
    showControl(*repeat_, password);
    showControl(*repeatCaption_, password);
    showControl(*keyFile_, !password);
    focusControl(password ? *password_ : *keyFile_);
}

void EncryptionPasswordView::setSectionState(int section)
{
    state_.section = section;
    SetDlgItemTextW(dialog_, IDC_SECTION, state_.sectionButton());
    layOut();
}

void EncryptionPasswordView::showAlgorithmList(bool shown)
{
    algorithmListShown_ = shown;
    if (shown)
    {
        showControl(*algorithmList_, true);
        showControl(*algorithmLink_, false);
        return;
    }
    showControl(*algorithmLink_, true);
    focusControl(*algorithmLink_); // the focus would hide with the list
    showControl(*algorithmList_, false);
}

void EncryptionPasswordView::updateLinks()
{
    algorithmLink_->setText(algorithmLink(state_.algorithm).c_str());
    algorithmList_->clearItems();
    for (const wchar_t* const name : AlgorithmNames)
        algorithmList_->addItem(name);
    algorithmList_->setCurrentItem(state_.algorithm);
    riddleLink_->setText(riddleLink(state_.riddle).c_str());
    if (commentLink_)
        commentLink_->setText(EncryptionText::SfxCommentLink);
    if (state_.section != 0)
        layOut(); // a riddle may need another height
}

} // namespace JobRunner
