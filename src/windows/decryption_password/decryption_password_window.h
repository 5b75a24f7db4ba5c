#pragma once

#include "interfaces/release_ptr.h"
#include "interfaces/vaultcore/factory.h"

#include <memory>
#include <string>

namespace JobRunner
{

class IDecryptionPasswordView;
class IDpvKeyValidation;

/// What the decryption password window ends with.
enum DecryptionPasswordAnswer : int
{
    DecryptionKeyGiven = 0,
    DecryptionIgnored = 1,
    DecryptionCancelled = 2,
};

/// Asks for what opens encrypted data. First thread only. The getters give the user's answer after the dialog has
/// ended too.
class DecryptionPasswordWindow
{
public:
    /// Makes a factory of the engine, which is asked about key files.
    using MakeEngineFactory = ReleasePtr<VaultCore::IFactory> (*)();

    DecryptionPasswordWindow(std::unique_ptr<IDecryptionPasswordView> view, MakeEngineFactory makeEngineFactory);
    ~DecryptionPasswordWindow();
    DecryptionPasswordWindow(const DecryptionPasswordWindow&) = delete;
    DecryptionPasswordWindow& operator=(const DecryptionPasswordWindow&) = delete;

    /// A `DecryptionPasswordMode`.
    void setDecryptionMode(int mode);
    /// The file that the key is for; empty for none in particular.
    void setFileName(const std::wstring& text);
    /// A further demand on key files. Not owned; null for none.
    void setValidator(IDpvKeyValidation* validator);
    /// Fill in the password, or the key file; the last call decides which of them the dialog asks for at first.
    void setPassword(const std::wstring& text);
    void setKeyFile(const std::wstring& path);

    /// Runs the dialog. A `DecryptionPasswordAnswer`.
    int doModal();

    std::wstring getPassword() const;
    std::wstring getKeyFile() const;

private:
    bool onOk();
    bool checkInputPresent();
    bool checkKeyType();
    bool checkWithChecker();
    void requireUsableKey(const std::wstring& keyFile);
    bool validates(const std::wstring& keyFile);
    void browseKeyFile();

    const std::unique_ptr<IDecryptionPasswordView> view_;
    const MakeEngineFactory makeEngineFactory_;
    IDpvKeyValidation* validator_ = nullptr;
    int result_ = DecryptionCancelled;
};

} // namespace JobRunner
