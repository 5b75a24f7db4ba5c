#pragma once

#include "windows/decryption_password/i_decryption_password_view.h"
#include "windows/encryption_password/i_encryption_password_view.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Fakes
{

class FakeEncryptionPasswordView;
class FakeDecryptionPasswordView;

/// What the user does while the dialog is up, and how it ends: true for Proceed. See the dialog's operations.
using EncryptionPasswordUser = std::function<bool(FakeEncryptionPasswordView&)>;
/// The same for a dialog that tells its end through its callbacks.
using DecryptionPasswordUser = std::function<void(FakeDecryptionPasswordView&)>;

/// What one encryption password dialog was told and what it holds; it outlives the dialog.
struct EncryptionPasswordRecord
{
    /// As "setDestiny 1", "doModal", "showError text" (or "showErrorOnRepeat text"), "setRepeatMismatch 1", in order.
    std::vector<std::wstring> calls;
    bool selfExtracting = false;
    bool passwordMode = true;
    std::wstring password;
    std::wstring repeat;
    std::wstring keyFile;
    int destiny = 1;
    int algorithm = 3;
    std::wstring riddle;
    std::wstring sfxComment;
    bool sfxCommentDefault = false;
};

class FakeEncryptionPasswordView : public JobRunner::IEncryptionPasswordView
{
public:
    FakeEncryptionPasswordView(std::shared_ptr<EncryptionPasswordRecord> record, EncryptionPasswordUser user)
        : record_(std::move(record)), user_(std::move(user))
    {
    }

    void setDestiny(int destiny) override;
    void setKeyFile(const std::wstring& path) override;
    void setSfxComment(const std::wstring& text) override;
    bool doModal() override;
    std::wstring getPassword() override { return record_->password; }
    std::wstring getPasswordRepeat() override { return record_->repeat; }
    std::wstring getKeyFile() override { return record_->keyFile; }
    int getDestiny() override { return record_->destiny; }
    std::wstring getRiddle() override { return record_->riddle; }
    int getAlgorithm() override { return record_->algorithm; }
    std::wstring getSfxComment() override { return record_->sfxComment; }
    bool isSfxCommentDefault() override { return record_->sfxCommentDefault; }
    bool isPasswordMode() override { return record_->passwordMode; }
    void showError(const std::wstring& message, bool onRepeat) override;
    void setRepeatMismatch(bool mismatch) override;

    // What the user can do. Other fields are changed in the record.
    EncryptionPasswordRecord& fields() { return *record_; }
    void type(const std::wstring& password, const std::wstring& repeat);
    void chooseKeyFile(const std::wstring& path);
    void browse() { onBrowseKeyFile(); }
    /// True when the dialog lets itself be closed.
    bool proceed() { return onOk(); }

private:
    std::shared_ptr<EncryptionPasswordRecord> record_;
    EncryptionPasswordUser user_;
};

/// The same for a decryption password dialog, with "setDecryptionMode 2", "setFileName name" and so on.
struct DecryptionPasswordRecord
{
    std::vector<std::wstring> calls;
    bool passwordMode = true;
    std::wstring password;
    std::wstring keyFile;
    int mode = 1;
    std::wstring fileName;
};

class FakeDecryptionPasswordView : public JobRunner::IDecryptionPasswordView
{
public:
    FakeDecryptionPasswordView(std::shared_ptr<DecryptionPasswordRecord> record, DecryptionPasswordUser user)
        : record_(std::move(record)), user_(std::move(user))
    {
    }

    void setPassword(const std::wstring& text) override;
    void setKeyFile(const std::wstring& path) override;
    void setDecryptionMode(int mode) override;
    void setHeaderText(const std::wstring& text) override;
    void setFileName(const std::wstring& text) override;
    void doModal() override;
    std::wstring getPassword() override { return record_->password; }
    std::wstring getKeyFile() override { return record_->keyFile; }
    bool isPasswordMode() override { return record_->passwordMode; }
    void showError(const std::wstring& message) override;

    // What the user can do. Other fields are changed in the record.
    DecryptionPasswordRecord& fields() { return *record_; }
    void browse() { onBrowseKeyFile(); }
    /// True when the dialog lets itself be closed.
    bool proceed() { return onOk(); }
    void ignore() { onIgnore(); }
    void cancel() { onCancel(); }

private:
    std::shared_ptr<DecryptionPasswordRecord> record_;
    DecryptionPasswordUser user_;
};

} // namespace Fakes
