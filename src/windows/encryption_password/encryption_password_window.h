#pragma once

#include "telemetry/i_event_tracker.h"

#include <memory>
#include <string>

namespace JobRunner
{

class IEncryptionPasswordView;

/// Asks for what a new encryption needs. All operations belong to the thread that calls `doModal`, which may be any.
/// The getters give the user's choice after the dialog has ended too.
class EncryptionPasswordWindow
{
public:
    /// Makes a view of the views in use.
    EncryptionPasswordWindow(bool selfExtracting, Halden::ZEL::Telemetry::EventTrackerPtr tracker);
    ~EncryptionPasswordWindow();
    EncryptionPasswordWindow(const EncryptionPasswordWindow&) = delete;
    EncryptionPasswordWindow& operator=(const EncryptionPasswordWindow&) = delete;

    /// What becomes of the original files at first: 0 keep, 1 delete, any other value wipe (2).
    void setDestiny(int destiny);
    void setSfxComment(const std::wstring& text);

    /// Runs the dialog under a usage view of its own. True when the user confirmed.
    bool doModal();

    bool isPasswordMode() const;
    std::wstring getPassword() const;
    std::wstring getKeyFile() const;
    int getAlgorithm() const;
    /// 0, 1 or 2, as in `setDestiny`.
    int getDestiny() const;
    std::wstring getRiddle() const;
    std::wstring getSfxComment() const;
    /// True when the user asked to keep the comment as the default.
    bool isSfxCommentDefault() const;

private:
    bool onOk();
    bool checkPasswords();
    void browseKeyFile();
    void onPasswordsChanged();

    const bool selfExtracting_;
    const std::unique_ptr<IEncryptionPasswordView> view_;
    const Halden::ZEL::Telemetry::EventTrackerPtr tracker_;
};

} // namespace JobRunner
