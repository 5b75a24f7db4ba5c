#include "jobprocess/modal_dialogs.h"

#include "bridges/module_factories.h"
#include "telemetry/usage_events.h"
#include "windows/decryption_password/decryption_password_window.h"
#include "windows/decryption_password/i_decryption_password_view.h"
#include "windows/encryption_password/encryption_password_window.h"
#include "windows/file_error/i_file_error_window_view.h"
#include "windows/framework/view_factory.h"

namespace JobRunner
{

using namespace Halden::ZEL::Telemetry;

namespace
{

const wchar_t* actionFor(int answer)
{
    switch (answer)
    {
    case FileErrorTryAgain:
        return UsageEvent::SetUserActionTry;
    case FileErrorSkipFile:
        return UsageEvent::SetUserActionSkip;
    case FileErrorAbortJob:
        return UsageEvent::SetUserActionAbort;
    default:
        return nullptr;
    }
}

} // namespace

ModalDialogs::ModalDialogs(EventTrackerPtr tracker) : tracker_(std::move(tracker)) {}

bool ModalDialogs::showEncryptionPassword(EncryptionPasswordRequest& request)
{
    EncryptionPasswordWindow window(false, tracker_);
    // The request's algorithm is not shown, intended: each dialog starts with its own.
    window.setDestiny(static_cast<int>(request.destiny));
    if (!window.doModal())
        return false;
    if (window.isPasswordMode())
        request.password = window.getPassword();
    else
        request.keyFile = window.getKeyFile();
    request.algorithm = static_cast<std::uint32_t>(window.getAlgorithm());
    request.destiny = static_cast<std::uint32_t>(window.getDestiny());
    request.riddle = window.getRiddle();
    return true;
}

int ModalDialogs::showDecryptionPassword(DecryptionPasswordRequest& request)
{
    DecryptionPasswordWindow window(viewFactory().createDecryptionPasswordView(), createVaultCoreFactory);
    window.setDecryptionMode(static_cast<int>(request.mode));
    window.setFileName(request.fileName);
    window.setValidator(request.validator);
    if (!request.password.empty())
        window.setPassword(request.password);
    if (!request.keyFile.empty()) // wins over a password
        window.setKeyFile(request.keyFile);
    const int answer = window.doModal();
    if (answer == DecryptionKeyGiven)
    {
        request.passwordOut = window.getPassword();
        request.keyFileOut = window.getKeyFile();
    }
    return answer;
}

int ModalDialogs::showFileError(const FileErrorRequest& request)
{
    const auto view = viewFactory().createFileErrorWindowView();
    if (!request.title.empty())
    {
        view->setTitle(request.title.c_str());
        view->setHeader(request.header.c_str());
    }
    view->setSource(request.source.c_str());
    if (request.target != request.source)
        view->setTarget(request.target.c_str());
    view->setMessage(request.message.c_str());
    const int answer = view->doModal();
    tracker_->TrackViewEvent(UsageEvent::FileError, request.message, NoEventValue);
    if (const wchar_t* const action = actionFor(answer))
        tracker_->TrackViewEvent(action, L"", NoEventValue);
    return answer;
}

} // namespace JobRunner
