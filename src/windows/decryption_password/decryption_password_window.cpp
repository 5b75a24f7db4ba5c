#include "windows/decryption_password/decryption_password_window.h"

#include "interfaces/process/key_validation.h"
#include "interfaces/vaultcore/exception.h"
#include "platform/narrow_text.h"
#include "windows/decryption_password/i_decryption_password_view.h"
#include "windows/framework/secret_text.h"
#include "windows/framework/view_factory.h"

#include <future>
#include <stdexcept>
#include <utility>

namespace JobRunner
{

namespace
{

bool opensData(int keyType)
{
    return keyType == VaultCore::KeyTypeSymmetric || keyType == VaultCore::KeyTypePrivateRsa ||
           keyType == VaultCore::KeyTypeRsaPair;
}

DecryptionPasswordWindow& windowOf(void* context)
{
    return *static_cast<DecryptionPasswordWindow*>(context);
}

} // namespace

DecryptionPasswordWindow::DecryptionPasswordWindow(std::unique_ptr<IDecryptionPasswordView> view,
                                                   MakeEngineFactory makeEngineFactory)
    : view_(std::move(view)), makeEngineFactory_(makeEngineFactory)
{
    view_->onOk = {[](void* context) { return windowOf(context).onOk(); }, this};
    view_->onIgnore = {[](void* context) { windowOf(context).result_ = DecryptionIgnored; }, this};
    view_->onCancel = {[](void* context) { windowOf(context).result_ = DecryptionCancelled; }, this};
    view_->onBrowseKeyFile = {[](void* context) { windowOf(context).browseKeyFile(); }, this};
}

DecryptionPasswordWindow::~DecryptionPasswordWindow() = default;

void DecryptionPasswordWindow::setDecryptionMode(int mode)
{
    view_->setDecryptionMode(mode);
}

void DecryptionPasswordWindow::setFileName(const std::wstring& text)
{
    view_->setFileName(text);
}

void DecryptionPasswordWindow::setValidator(IDpvKeyValidation* validator)
{
    validator_ = validator;
}

void DecryptionPasswordWindow::setPassword(const std::wstring& text)
{
    view_->setPassword(text);
}

void DecryptionPasswordWindow::setKeyFile(const std::wstring& path)
{
    view_->setKeyFile(path);
}

int DecryptionPasswordWindow::doModal()
{
    view_->doModal();
    return result_;
}

std::wstring DecryptionPasswordWindow::getPassword() const
{
    return view_->getPassword();
}

std::wstring DecryptionPasswordWindow::getKeyFile() const
{
    return view_->getKeyFile();
}

bool DecryptionPasswordWindow::onOk()
{
    if (!checkInputPresent() || !checkKeyType() || !checkWithChecker())
        return false;
    result_ = DecryptionKeyGiven;
    return true;
}

bool DecryptionPasswordWindow::checkInputPresent()
{
    if (view_->isPasswordMode())
    {
        if (!SecretText(view_->getPassword()).empty())
            return true;
        view_->showError(L"Enter your password, please.");
        return false;
    }
    const std::wstring keyFile = view_->getKeyFile();
    if (keyFile.empty())
    {
        view_->showError(L"Provide key file path, please.");
        return false;
    }
    // Intended: the refusal is shown here and decided by the last check, which shows it once more.
    validates(keyFile);
    return true;
}

bool DecryptionPasswordWindow::checkKeyType()
{
    // Intended: in password mode a key file that is left in the hidden field is loaded too.
    const std::wstring keyFile = view_->getKeyFile();
    if (keyFile.empty())
        return true;
    try
    {
        requireUsableKey(keyFile);
        return true;
    }
    catch (const VaultCore::Exception& failure)
    {
        view_->showError(failure.GetText());
    }
    catch (const std::exception& failure)
    {
        view_->showError(Platform::widenThreadText(failure.what()));
    }
    return false;
}

bool DecryptionPasswordWindow::checkWithChecker()
{
    const std::wstring keyFile = view_->getKeyFile();
    return keyFile.empty() || validates(keyFile);
}

void DecryptionPasswordWindow::requireUsableKey(const std::wstring& keyFile)
{
    const ReleasePtr<VaultCore::IFactory> factory = makeEngineFactory_();
    const ReleasePtr<VaultCore::IKey> key(factory->LoadKeyFile(keyFile.c_str()));
    if (!opensData(key->GetKeyType()))
        throw std::runtime_error("Incompatible key type for decryption.");
}

/// True without a validator. A refusal is shown.
bool DecryptionPasswordWindow::validates(const std::wstring& keyFile)
{
    std::wstring message;
    if (!validator_ || validator_->ValidateKeyFile(keyFile.c_str(), message))
        return true;
    view_->showError(message);
    return false;
}

void DecryptionPasswordWindow::browseKeyFile()
{
    // The dialog's thread sleeps meanwhile. A cancelled file dialog empties the field and switches to key file mode,
    // intended.
    view_->setKeyFile(std::async([] { return viewFactory().pickKeyFile(false); }).get());
}

} // namespace JobRunner
