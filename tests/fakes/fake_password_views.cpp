#include "fakes/fake_password_views.h"

namespace Fakes
{

void FakeEncryptionPasswordView::setDestiny(int destiny)
{
    record_->calls.push_back(L"setDestiny " + std::to_wstring(destiny));
    record_->destiny = destiny;
}

void FakeEncryptionPasswordView::setKeyFile(const std::wstring& path)
{
    record_->calls.push_back(L"setKeyFile " + path);
    record_->keyFile = path;
}

void FakeEncryptionPasswordView::setSfxComment(const std::wstring& text)
{
    record_->calls.push_back(L"setSfxComment " + text);
    record_->sfxComment = text;
}

bool FakeEncryptionPasswordView::doModal()
{
    record_->calls.push_back(L"doModal");
    return user_ && user_(*this);
}

void FakeEncryptionPasswordView::showError(const std::wstring& message, bool onRepeat)
{
    record_->calls.push_back((onRepeat ? L"showErrorOnRepeat " : L"showError ") + message);
}

void FakeEncryptionPasswordView::setRepeatMismatch(bool mismatch)
{
    record_->calls.push_back(mismatch ? L"setRepeatMismatch 1" : L"setRepeatMismatch 0");
}

void FakeEncryptionPasswordView::type(const std::wstring& password, const std::wstring& repeat)
{
    record_->passwordMode = true;
    record_->password = password;
    record_->repeat = repeat;
    onPasswordsChanged();
}

void FakeEncryptionPasswordView::chooseKeyFile(const std::wstring& path)
{
    record_->passwordMode = false;
    record_->keyFile = path;
}

void FakeDecryptionPasswordView::setPassword(const std::wstring& text)
{
    record_->calls.push_back(L"setPassword " + text);
    record_->password = text;
    record_->passwordMode = true;
}

void FakeDecryptionPasswordView::setKeyFile(const std::wstring& path)
{
    record_->calls.push_back(L"setKeyFile " + path);
    record_->keyFile = path;
    record_->passwordMode = false;
}

void FakeDecryptionPasswordView::setDecryptionMode(int mode)
{
    record_->calls.push_back(L"setDecryptionMode " + std::to_wstring(mode));
    record_->mode = mode;
}

void FakeDecryptionPasswordView::setHeaderText(const std::wstring& text)
{
    record_->calls.push_back(L"setHeaderText " + text);
}

void FakeDecryptionPasswordView::setFileName(const std::wstring& text)
{
    record_->calls.push_back(L"setFileName " + text);
    record_->fileName = text;
}

void FakeDecryptionPasswordView::doModal()
{
    record_->calls.push_back(L"doModal");
    if (user_)
        user_(*this);
    else
        cancel();
}

void FakeDecryptionPasswordView::showError(const std::wstring& message)
{
    record_->calls.push_back(L"showError " + message);
}

} // namespace Fakes
