#include "jobprocess/modal_dialogs.h"

#include "telemetry/usage_events.h"
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

bool ModalDialogs::showEncryptionPassword(EncryptionPasswordRequest&)
{
    return false;
}

int ModalDialogs::showDecryptionPassword(DecryptionPasswordRequest&)
{
    return 2;
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
