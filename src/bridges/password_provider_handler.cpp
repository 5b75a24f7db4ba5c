#include "bridges/password_provider_handler.h"

#include "bridges/module_factories.h"
#include "interfaces/process/gui_events.h"
#include "windows/decryption_password/i_decryption_password_view.h"
#include "windows/progress/progress_window.h"

#include <utility>

namespace JobRunner
{

PasswordProviderHandler::~PasswordProviderHandler()
{
    for (auto& key : storedKeys_)
        key.reset();
}

int PasswordProviderHandler::ProvideKey(const wchar_t* file, VaultCore::IKey** key)
{
    const auto factory = createVaultCoreFactory();
    window_->hideWindow();
    ++attempts_;
    std::wstring password;
    std::wstring keyFile;
    const int answer = ask(file, password, keyFile);
    const SecretText entered(std::move(password));
    window_->showWindow();
    // Intended: the earlier entry stays, whatever the window held, so that a job that goes on reads that entry.
    if (answer == VaultCore::KeyCancelJob || answer == VaultCore::KeyIgnoreFile)
        return answer;
    *key = makeKey(*factory, entered, keyFile);
    return VaultCore::KeyProvided;
}

int PasswordProviderHandler::ask(const wchar_t* file, std::wstring& password, std::wstring& keyFile)
{
    const auto mode = static_cast<std::uint32_t>(GetPasswordWindowMode());
    IDpvKeyValidation* const validation = GetKeyValidation();
    // Intended: the first question names no file. A repeated one names it and shows what was tried.
    if (attempts_ == 1)
        return gui_->showDecryptionPasswordWindow(L"", L"", L"", mode, validation, password, keyFile);
    const wchar_t* const previousPassword = keyFile_.empty() ? password_.text().c_str() : L"";
    return gui_->showDecryptionPasswordWindow(file, previousPassword, keyFile_.c_str(), mode, validation, password,
                                              keyFile);
}

VaultCore::IKey* PasswordProviderHandler::makeKey(VaultCore::IFactory& factory, const SecretText& password,
                                                  const std::wstring& keyFile)
{
    // Intended: a window that gave both is taken as a password.
    const bool byPassword = !password.empty();
    VaultCore::IKey* const key =
        byPassword ? factory.CreatePasswordKey(password.text().c_str()) : factory.LoadKeyFile(keyFile.c_str());
    password_.take(std::wstring(password.text()));
    keyFile_ = byPassword ? std::wstring() : keyFile;
    return key;
}

VaultCore::IKey* PasswordProviderHandler::GetStoredKey(int index)
{
    const bool stored = index >= 0 && index < GetStoredKeyCount();
    return stored ? storedKeys_[static_cast<std::size_t>(index)].get() : nullptr;
}

int PasswordProviderHandler::GetStoredKeyCount()
{
    return static_cast<int>(storedKeys_.size());
}

bool PasswordProviderHandler::AddStoredKey(VaultCore::IKey* key)
{
    storedKeys_.emplace_back(key);
    return true;
}

int PasswordProviderHandler::GetPasswordWindowMode()
{
    return deletesOriginals_ ? DecryptionDeletesOriginals : DecryptionKeepsOriginals;
}

IDpvKeyValidation* PasswordProviderHandler::GetKeyValidation()
{
    return nullptr;
}

} // namespace JobRunner
