#pragma once

#include "windows/framework/view_callback.h"

#include <string>

namespace JobRunner
{

/// The dialog that asks for what a new encryption needs. One thread only. Setters store; those that say so take
/// effect at once while the dialog is up. The getters give what was stored last, after the dialog has ended too.
class IEncryptionPasswordView
{
public:
    virtual ~IEncryptionPasswordView() = default;
    /// 0 keep, 1 delete, 2 wipe. Takes effect when the dialog opens.
    virtual void setDestiny(int destiny) = 0;
    /// Takes effect at once.
    virtual void setKeyFile(const std::wstring& path) = 0;
    virtual void setSfxComment(const std::wstring& text) = 0;
    /// True when the user confirmed what `onOk` accepted.
    virtual bool doModal() = 0;
    virtual std::wstring getPassword() = 0;
    virtual std::wstring getPasswordRepeat() = 0;
    virtual std::wstring getKeyFile() = 0;
    virtual int getDestiny() = 0;
    virtual std::wstring getRiddle() = 0;
    virtual int getAlgorithm() = 0;
    virtual std::wstring getSfxComment() = 0;
    /// True when the user asked to keep the comment as the default.
    virtual bool isSfxCommentDefault() = 0;
    virtual bool isPasswordMode() = 0;
    /// At the repeated password when `onRepeat` is true, at the password otherwise.
    virtual void showError(const std::wstring& message, bool onRepeat) = 0;
    /// Marks the repeated password as wrong, or as right again.
    virtual void setRepeatMismatch(bool mismatch) = 0;

    ViewCheck onOk;
    ViewCallback onIgnore;
    ViewCallback onCancel;
    ViewCallback onBrowseKeyFile;
    ViewCallback onPasswordsChanged;
};

} // namespace JobRunner
