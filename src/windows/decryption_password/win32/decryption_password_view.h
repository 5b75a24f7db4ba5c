#pragma once

#include "windows/decryption_password/i_decryption_password_view.h"
#include "windows/framework/secret_text.h"
#include "windows/framework/win32/password_controls.h"

#include <windows.h>

namespace JobRunner
{

/// The dialog of template 302 with its custom controls. See `IDecryptionPasswordView`.
class DecryptionPasswordView final : public IDecryptionPasswordView
{
public:
    void setPassword(const std::wstring& text) override;
    void setKeyFile(const std::wstring& path) override;
    void setDecryptionMode(int mode) override;
    void setHeaderText(const std::wstring& text) override;
    void setFileName(const std::wstring& text) override;
    void doModal() override;
    std::wstring getPassword() override;
    std::wstring getKeyFile() override;
    bool isPasswordMode() override { return passwordMode_; }
    void showError(const std::wstring& message) override;

private:
    static INT_PTR CALLBACK procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
    INT_PTR onMessage(UINT message, WPARAM wParam, LPARAM lParam);
    INT_PTR onCommand(int id);
    bool onControlMessage(UINT message, int control, int detail);
    void onInit();
    void onDestroy();
    void makeControls();
    void applyInput();
    void applyInputIfOpen();
    void readEdits();
    /// Header, second line, layout, edit of the input choice, buttons.
    void refresh();
    void layOut();
    void arrangeButtons();
    IEditWithIconButtons& currentEdit() { return passwordMode_ ? *password_ : *keyFile_; }

    std::wstring headerText_;
    std::wstring fileName_;
    SecretText passwordText_;
    std::wstring keyFileText_;
    bool passwordMode_ = true;
    int mode_ = DecryptionDeletesOriginals;

    HWND dialog_ = nullptr;
    PasswordControls controls_;
    ICopyDialogGradient* header_ = nullptr;
    ITextWithLinks* originCaption_ = nullptr;
    ITextWithLinks* origin_ = nullptr;
    ITextWithPopupMenu* inputChoice_ = nullptr;
    IEditWithIconButtons* password_ = nullptr;
    IEditWithIconButtons* keyFile_ = nullptr;
};

} // namespace JobRunner
