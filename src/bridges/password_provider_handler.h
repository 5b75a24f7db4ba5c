#pragma once

#include "interfaces/release_ptr.h"
#include "interfaces/vaultcore/key.h"
#include "interfaces/vaultcore/password_provider.h"
#include "windows/framework/secret_text.h"

#include <memory>
#include <string>
#include <vector>

namespace VaultCore
{
class IFactory;
}

namespace JobRunner
{

class IDpvKeyValidation;
class IGuiEvents;
class ProgressWindow;

/// Makes the keys of a decryption from what the user enters in the decryption password window, and remembers the last
/// entry. Called on the engine's threads, one at a time; an engine thread stays blocked until the user has answered.
/// The entry is read after the engine has finished. Intended: there is no virtual destructor; see
/// `PasswordProviderPtr`.
class PasswordProviderHandler : public VaultCore::IPasswordProvider
{
public:
    /// Neither is owned.
    PasswordProviderHandler(ProgressWindow* window, IGuiEvents* gui) : window_(window), gui_(gui) {}
    PasswordProviderHandler(const PasswordProviderHandler&) = delete;
    PasswordProviderHandler& operator=(const PasswordProviderHandler&) = delete;
    /// Releases the stored keys, the first one first.
    ~PasswordProviderHandler();

    /// Throws what the engine throws when the key file cannot be loaded.
    int ProvideKey(const wchar_t* file, VaultCore::IKey** key) override;
    /// Null for an index outside the list.
    VaultCore::IKey* GetStoredKey(int index) override;
    int GetStoredKeyCount() override;
    bool AddStoredKey(VaultCore::IKey* key) override;

    /// Mode of the decryption password window.
    virtual int GetPasswordWindowMode();
    /// A further demand on key files, not owned; null for none.
    virtual IDpvKeyValidation* GetKeyValidation();

    /// Whether the encrypted files are deleted after decryption, which the window tells the user. Before the engine
    /// starts.
    void setDeletesOriginals(bool deletes) { deletesOriginals_ = deletes; }

    /// What the user entered last; at most one of the two is not empty.
    const std::wstring& password() const { return password_.text(); }
    const std::wstring& keyFile() const { return keyFile_; }

private:
    int ask(const wchar_t* file, std::wstring& password, std::wstring& keyFile);
    /// Remembers the entry once its key is made.
    VaultCore::IKey* makeKey(VaultCore::IFactory& factory, const SecretText& password, const std::wstring& keyFile);

    int attempts_ = 0;
    SecretText password_;
    std::wstring keyFile_;
    bool deletesOriginals_ = true;
    std::vector<ReleasePtr<VaultCore::IKey>> storedKeys_;
    ProgressWindow* window_;
    IGuiEvents* gui_;
};

/// Owns a provider and ends it as the class that it was made as.
using PasswordProviderPtr = std::unique_ptr<PasswordProviderHandler, void (*)(PasswordProviderHandler*)>;

template <class Provider> PasswordProviderPtr makePasswordProvider(ProgressWindow* window, IGuiEvents* gui)
{
    const auto end = [](PasswordProviderHandler* provider)
    { std::default_delete<Provider>()(static_cast<Provider*>(provider)); };
    return {std::make_unique<Provider>(window, gui).release(), end};
}

} // namespace JobRunner
