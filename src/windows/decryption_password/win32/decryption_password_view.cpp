#include "windows/decryption_password/win32/decryption_password_view.h"

#include "resources/resource.h"
#include "systemutilities/shell_utilities.h"
#include "windows/decryption_password/decryption_password_layout.h"
#include "windows/decryption_password/decryption_password_texts.h"
#include "windows/framework/password_dialog_texts.h"
#include "windows/framework/win32/control_messages.h"
#include "windows/framework/win32/dialog.h"
#include "windows/framework/win32/help_topic.h"
#include "windows/framework/win32/placement.h"
#include "windows/framework/win32/scale.h"

namespace JobRunner
{

namespace
{
/// No item of the dialog sends it.
constexpr int HelpCommand = 110;
constexpr int PasswordItem = 0;
constexpr int KeyFileItem = 1;
} // namespace

void DecryptionPasswordView::setPassword(const std::wstring& text)
{
    passwordText_.take(std::wstring(text));
    passwordMode_ = true;
    applyInputIfOpen();
}

void DecryptionPasswordView::setKeyFile(const std::wstring& path)
{
    keyFileText_ = path;
    passwordMode_ = false;
    applyInputIfOpen();
}

void DecryptionPasswordView::setDecryptionMode(int mode)
{
    mode_ = mode;
    applyInputIfOpen();
}

void DecryptionPasswordView::setHeaderText(const std::wstring& text)
{
    headerText_ = text;
    applyInputIfOpen();
}

void DecryptionPasswordView::setFileName(const std::wstring& text)
{
    fileName_ = text;
}

void DecryptionPasswordView::doModal()
{
    DialogBoxParamW(resourceModule(), MAKEINTRESOURCEW(IDD_DECRYPTION_PASSWORD), GetActiveWindow(), procedure,
                    reinterpret_cast<LPARAM>(this));
}

std::wstring DecryptionPasswordView::getPassword()
{
    if (dialog_)
        readEdits();
    return passwordText_.text();
}

std::wstring DecryptionPasswordView::getKeyFile()
{
    if (dialog_)
        readEdits();
    return keyFileText_;
}

void DecryptionPasswordView::showError(const std::wstring& message)
{
    currentEdit().showBalloon(decryptionErrorTitle(passwordMode_), message.c_str());
}

INT_PTR CALLBACK DecryptionPasswordView::procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto* const self = viewOf<DecryptionPasswordView>(dialog, message, lParam);
    if (self && message == WM_INITDIALOG)
        self->dialog_ = dialog;
    return self && self->dialog_ ? self->onMessage(message, wParam, lParam) : FALSE;
}

INT_PTR DecryptionPasswordView::onMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message)
    {
    case WM_INITDIALOG:
        onInit();
        return FALSE; // the edit has the focus
    case WM_ERASEBKGND:
        controls_.paint(reinterpret_cast<HDC>(wParam));
        SetWindowLongPtrW(dialog_, DWLP_MSGRESULT, 1);
        return TRUE;
    case WM_COMMAND:
        return onCommand(LOWORD(wParam));
    case WM_DESTROY:
        onDestroy();
        return TRUE;
    default:
        return onControlMessage(message, static_cast<int>(wParam), static_cast<int>(lParam)) ? TRUE : FALSE;
    }
}

INT_PTR DecryptionPasswordView::onCommand(int id)
{
    switch (id)
    {
    case IDC_PROCEED:
        readEdits();
        if (onOk())
            EndDialog(dialog_, IDC_PROCEED);
        return TRUE;
    case IDC_IGNORE:
        onIgnore();
        return EndDialog(dialog_, IDC_IGNORE);
    case IDC_CANCEL: // the close box too
        onCancel();
        return EndDialog(dialog_, IDC_CANCEL);
    case HelpCommand:
        showHelpTopic(dialog_, L"decryption_context_dialog.htm");
        return TRUE;
    default:
        return FALSE;
    }
}

bool DecryptionPasswordView::onControlMessage(UINT message, int control, int detail)
{
    const ControlMessages& messages = controlMessages();
    if (message == messages.itemChanged)
    {
        passwordMode_ = detail == PasswordItem;
        refresh();
        return true;
    }
    if (message != messages.buttonPressed && message != messages.buttonClicked)
        return false;
    // One of a control that is none of these edits is ignored, and counts as handled.
    if (detail != 0)
        return true;
    const bool pressed = message == messages.buttonPressed;
    if (control == password_->getControlId())
        pressed ? password_->unmaskText() : password_->maskText();
    else if (control == keyFile_->getControlId() && pressed)
        onBrowseKeyFile();
    return true;
}

void DecryptionPasswordView::onInit()
{
    centreDialog(dialog_);
    controls_.attach(dialog_);
    makeControls();
    applyInput();
    InvalidateRect(dialog_, nullptr, TRUE);
    Halden::SystemUtilities::ForceForegroundWindow(dialog_);
}

void DecryptionPasswordView::onDestroy()
{
    controls_.destroy(header_);
    controls_.destroy(inputChoice_);
    controls_.destroy(password_);
    controls_.destroy(origin_);
    controls_.destroy(originCaption_);
    // Kept: the key file's edit goes down with the dialog.
    controls_.detach();
    dialog_ = nullptr;
}

void DecryptionPasswordView::makeControls()
{
    header_ = controls_.makeHeader(headerText_.c_str());
    originCaption_ = controls_.makeCaption(OriginCaption);
    origin_ = controls_.makeText(L"");
    inputChoice_ = controls_.makeInputChoice();
    password_ = controls_.makePasswordEdit();
    keyFile_ = controls_.makeKeyFileEdit();
    for (const int id : {IDC_PROCEED, IDC_IGNORE, IDC_CANCEL})
        makeLastTabStop(dialog_, id);
}

void DecryptionPasswordView::applyInputIfOpen()
{
    if (dialog_)
        applyInput();
}

void DecryptionPasswordView::applyInput()
{
    // Kept: both edits take what is stored, so a password that was typed since is lost when a key file is picked.
    password_->setText(passwordText_.text().c_str());
    keyFile_->setText(keyFileText_.c_str());
    inputChoice_->setCurrentItem(passwordMode_ ? PasswordItem : KeyFileItem);
    refresh();
}

void DecryptionPasswordView::readEdits()
{
    passwordText_.take(password_->getText());
    keyFileText_ = keyFile_->getText();
}

void DecryptionPasswordView::refresh()
{
    headerText_ = decryptionHeader(mode_, fileName_);
    header_->setText(headerText_.c_str());
    origin_->setText(decryptionOrigin(mode_).c_str());
    RECT window{};
    GetWindowRect(dialog_, &window);
    header_->setHeight(header_->heightForWidth(static_cast<int>(window.right - window.left)));
    layOut();
    showControl(*password_, passwordMode_);
    showControl(*keyFile_, !passwordMode_);
    focusControl(currentEdit());
    arrangeButtons();
}

void DecryptionPasswordView::layOut()
{
    inputChoice_->fitToContent();
    origin_->fitToContent();
    DecryptionContent content;
    content.scale = [this](int distance) { return scaleByDpi(dialog_, distance); };
    content.captionColumn = [this](LayoutPoint place)
    {
        moveTo(*inputChoice_, place);
        return inputChoice_->getCaptionLeft();
    };
    content.headerBottom = boxOf(*header_).bottom();
    content.cancelRight = boxOfItem(dialog_, IDC_CANCEL).right();
    content.inputChoiceWidth = boxOf(*inputChoice_).width;
    content.originTextHeight = boxOf(*origin_).height;
    content.editHeight = boxOf(*password_).height;

    const DecryptionLayout layout = layOutDecryption(content);
    moveTo(*originCaption_, layout.originCaption);
    moveTo(*origin_, layout.originText);
    origin_->setWidth(layout.valueWidth, true);
    for (IEditWithIconButtons* const edit : {password_, keyFile_})
    {
        edit->setWidth(layout.valueWidth, true);
        moveTo(*edit, layout.edit);
    }
}

void DecryptionPasswordView::arrangeButtons()
{
    if (decryptionCanIgnore(mode_))
        return;
    const LayoutBox ignore = boxOfItem(dialog_, IDC_IGNORE);
    ShowWindow(GetDlgItem(dialog_, IDC_IGNORE), SW_HIDE);
    moveItem(dialog_, IDC_PROCEED, {ignore.x, ignore.y});
}

} // namespace JobRunner
