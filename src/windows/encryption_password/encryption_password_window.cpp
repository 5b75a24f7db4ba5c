#include "windows/encryption_password/encryption_password_window.h"

#include "telemetry/usage_events.h"
#include "windows/encryption_password/encryption_password_texts.h"
#include "windows/encryption_password/i_encryption_password_view.h"
#include "windows/framework/secret_text.h"
#include "windows/framework/view_factory.h"

#include <future>
#include <utility>

namespace JobRunner
{

using namespace Halden::ZEL::Telemetry;

namespace
{

constexpr bool OnPassword = false;
constexpr bool OnRepeat = true;

int knownDestiny(int destiny)
{
    return destiny == DestinyKeep || destiny == DestinyDelete ? destiny : DestinyWipe;
}

EncryptionPasswordWindow& windowOf(void* context)
{
    return *static_cast<EncryptionPasswordWindow*>(context);
}

} // namespace

EncryptionPasswordWindow::EncryptionPasswordWindow(bool selfExtracting, EventTrackerPtr tracker)
    : selfExtracting_(selfExtracting), view_(viewFactory().createEncryptionPasswordView(selfExtracting)),
      tracker_(std::move(tracker))
{
    view_->onOk = {[](void* context) { return windowOf(context).onOk(); }, this};
    view_->onBrowseKeyFile = {[](void* context) { windowOf(context).browseKeyFile(); }, this};
    view_->onPasswordsChanged = {[](void* context) { windowOf(context).onPasswordsChanged(); }, this};
}

EncryptionPasswordWindow::~EncryptionPasswordWindow() = default;

void EncryptionPasswordWindow::setDestiny(int destiny)
{
    view_->setDestiny(knownDestiny(destiny));
}

void EncryptionPasswordWindow::setSfxComment(const std::wstring& text)
{
    view_->setSfxComment(text);
}

bool EncryptionPasswordWindow::doModal()
{
    const ViewState before = tracker_->GetViewState();
    tracker_->TrackView(
        {ProcessTag, selfExtracting_ ? UsageView::EncryptionSfx : UsageView::Encryption, UsageView::PasswordWindow},
        UsageView::PasswordWindowTitle);
    const bool confirmed = view_->doModal();
    tracker_->TrackViewEvent(confirmed ? UsageEvent::ClickOk : UsageEvent::ClickCancel, L"", NoEventValue);
    tracker_->TrackViewState(before);
    return confirmed;
}

bool EncryptionPasswordWindow::isPasswordMode() const
{
    return view_->isPasswordMode();
}

std::wstring EncryptionPasswordWindow::getPassword() const
{
    return view_->getPassword();
}

std::wstring EncryptionPasswordWindow::getKeyFile() const
{
    return view_->getKeyFile();
}

int EncryptionPasswordWindow::getAlgorithm() const
{
    return view_->getAlgorithm();
}

int EncryptionPasswordWindow::getDestiny() const
{
    return knownDestiny(view_->getDestiny());
}

std::wstring EncryptionPasswordWindow::getRiddle() const
{
    return view_->getRiddle();
}

std::wstring EncryptionPasswordWindow::getSfxComment() const
{
    return view_->getSfxComment();
}

bool EncryptionPasswordWindow::isSfxCommentDefault() const
{
    return view_->isSfxCommentDefault();
}

bool EncryptionPasswordWindow::onOk()
{
    if (view_->isPasswordMode())
        return checkPasswords();
    // An empty path is refused without a word, intended.
    return !view_->getKeyFile().empty();
}

bool EncryptionPasswordWindow::checkPasswords()
{
    const SecretText password(view_->getPassword());
    const SecretText repeat(view_->getPasswordRepeat());
    if (password.empty())
        view_->showError(L"Please type password here.", OnPassword);
    else if (repeat.empty())
        view_->showError(L"Please repeat password here.", OnRepeat);
    else if (!(password == repeat))
        view_->showError(L"Your second password must match the first password.", OnRepeat);
    else
        return true;
    return false;
}

void EncryptionPasswordWindow::browseKeyFile()
{
    // The dialog's thread sleeps meanwhile. A cancelled file dialog empties the field, intended.
    view_->setKeyFile(std::async([] { return viewFactory().pickKeyFile(true); }).get());
}

void EncryptionPasswordWindow::onPasswordsChanged()
{
    const SecretText password(view_->getPassword());
    const SecretText repeat(view_->getPasswordRepeat());
    view_->setRepeatMismatch(!(password == repeat));
}

} // namespace JobRunner
