#pragma once

#include "windows/framework/view_callback.h"

#include <string>

namespace JobRunner
{

/// Modes of the decryption password window. Any other value behaves as the first.
enum DecryptionPasswordMode : int
{
    DecryptionKeepsOriginals = 0,
    DecryptionDeletesOriginals = 1,
    DecryptionOpensDocument = 2,
};

/// The dialog that asks for what opens encrypted data. One thread only. All setters but `setFileName` take effect at
/// once while the dialog is up.
class IDecryptionPasswordView
{
public:
    virtual ~IDecryptionPasswordView() = default;
    /// Switches to password mode.
    virtual void setPassword(const std::wstring& text) = 0;
    /// Switches to key file mode.
    virtual void setKeyFile(const std::wstring& path) = 0;
    virtual void setDecryptionMode(int mode) = 0;
    virtual void setHeaderText(const std::wstring& text) = 0;
    virtual void setFileName(const std::wstring& text) = 0;
    virtual void doModal() = 0;
    virtual std::wstring getPassword() = 0;
    virtual std::wstring getKeyFile() = 0;
    virtual bool isPasswordMode() = 0;
    /// At the edit of the current mode.
    virtual void showError(const std::wstring& message) = 0;

    ViewCheck onOk;
    ViewCallback onIgnore;
    ViewCallback onCancel;
    ViewCallback onBrowseKeyFile;
};

} // namespace JobRunner
