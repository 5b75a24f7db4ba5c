#pragma once

#include "resources/resource.h"
#include "windows/encryption_password/encryption_password_state.h"
#include "windows/encryption_password/i_encryption_password_view.h"
#include "windows/framework/win32/password_controls.h"

#include <vector>

#include <windows.h>

namespace JobRunner
{

struct EncryptionContent;
struct EncryptionLayout;

/// The dialog of template 304 with its custom controls. See `IEncryptionPasswordView`.
class EncryptionPasswordView final : public IEncryptionPasswordView
{
public:
    explicit EncryptionPasswordView(bool selfExtracting) : selfExtracting_(selfExtracting) {}

    void setDestiny(int destiny) override { state_.destiny = destiny; }
    void setKeyFile(const std::wstring& path) override;
    void setSfxComment(const std::wstring& text) override { state_.sfxComment = text; }
    bool doModal() override;
    std::wstring getPassword() override { return state_.password.text(); }
    std::wstring getPasswordRepeat() override { return state_.repeat.text(); }
    std::wstring getKeyFile() override { return state_.keyFile; }
    int getDestiny() override { return state_.destiny; }
    std::wstring getRiddle() override { return state_.riddle; }
    int getAlgorithm() override { return state_.algorithm; }
    std::wstring getSfxComment() override { return state_.sfxComment; }
    bool isSfxCommentDefault() override { return state_.sfxCommentDefault; }
    bool isPasswordMode() override { return state_.passwordMode(); }
    void showError(const std::wstring& message, bool onRepeat) override;
    void setRepeatMismatch(bool mismatch) override;

private:
    /// A row of the "More" section.
    struct Row
    {
        ITextWithLinks* caption;
        ITextWithLinks* value;
    };

    static INT_PTR CALLBACK procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
    INT_PTR onMessage(UINT message, WPARAM wParam, LPARAM lParam);
    INT_PTR onCommand(int id);
    bool onControlMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void onEditButton(int control, bool pressed);
    void onTextChanged(int control);
    void onLink(const wchar_t* href);
    void onAlgorithmChosen();
    void onInit();
    void onDestroy();
    void makeControls();
    ITextWithLinks* makeRow(const wchar_t* caption);
    void readEdits();
    void setInputMode(int mode);
    void setSectionState(int section);
    void showAlgorithmList(bool shown);
    void updateLinks();
    /// Places everything, shows or hides the section, and paints anew.
    void layOut();
    EncryptionContent measure();
    void applyFirstRows(const EncryptionLayout& layout);
    void applyRows(const EncryptionLayout& layout);
    void showRows();

    static constexpr int Buttons[] = {IDC_PROCEED, IDC_CANCEL, IDC_SECTION};

    EncryptionPasswordState state_;
    const bool selfExtracting_;
    /// Kept: a list that is left without a choice stays in place of the link.
    bool algorithmListShown_ = false;

    HWND dialog_ = nullptr;
    PasswordControls controls_;
    ICopyDialogGradient* header_ = nullptr;
    ITextWithLinks* originCaption_ = nullptr;
    ITextWithLinks* origin_ = nullptr;
    ITextWithPopupMenu* inputChoice_ = nullptr;
    ITextWithLinks* repeatCaption_ = nullptr;
    IEditWithIconButtons* password_ = nullptr;
    IEditWithIconButtons* repeat_ = nullptr;
    IEditWithIconButtons* keyFile_ = nullptr;
    std::vector<Row> rows_;
    ITextWithLinks* algorithmLink_ = nullptr;
    ITextWithLinks* riddleLink_ = nullptr;
    /// Null unless the job is self-extracting.
    ITextWithLinks* commentLink_ = nullptr;
    IComboBox* algorithmList_ = nullptr;
};

} // namespace JobRunner
