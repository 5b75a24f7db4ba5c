#include "jobprocess/message_window.h"

#include "platform/platform.h"
#include "platform/threads.h"

namespace JobRunner
{

using Platform::platform;

MessageWindow::MessageWindow(IModalDialogs& dialogs) : dialogs_(dialogs) {}

bool MessageWindow::create()
{
    Platform::Messages& messages = platform().messages;
    className_ = L"JobRunner_MessageWindow";
    if (!messages.registerClass(className_))
        return false;
    window_ = messages.createWindow(className_, L"JobRunner MessageWindow", *this);
    if (!window_)
    {
        messages.unregisterClass(className_);
        return false;
    }
    firstThreadId_ = platform().threads.currentThreadId();
    return true;
}

void MessageWindow::close()
{
    platform().messages.send(window_, WM_JOB_CLOSE, 0, 0);
}

bool MessageWindow::showEncryptionPassword(EncryptionPasswordRequest& request)
{
    if (isFirstThread())
        return dialogs_.showEncryptionPassword(request);
    return send(WM_JOB_ENCRYPTION_PASSWORD, &request) == 1;
}

int MessageWindow::showDecryptionPassword(DecryptionPasswordRequest& request)
{
    if (isFirstThread())
        return dialogs_.showDecryptionPassword(request);
    return static_cast<int>(send(WM_JOB_DECRYPTION_PASSWORD, &request));
}

int MessageWindow::showFileError(FileErrorRequest& request)
{
    if (isFirstThread())
        return dialogs_.showFileError(request);
    return static_cast<int>(send(WM_JOB_FILE_ERROR, &request));
}

std::intptr_t MessageWindow::onMessage(Platform::WindowHandle window, std::uint32_t message, std::uintptr_t wParam,
                                       std::intptr_t lParam)
{
    Platform::Messages& messages = platform().messages;
    void* const request = reinterpret_cast<void*>(wParam);
    switch (message)
    {
    case WM_JOB_CLOSE:
        messages.destroyWindow(window_);
        return messages.defaultProcedure(window, message, wParam, lParam);
    case Platform::WindowDestroyed:
        messages.postQuit();
        return 0;
    case WM_JOB_ENCRYPTION_PASSWORD:
        return showEncryptionPassword(*static_cast<EncryptionPasswordRequest*>(request)) ? 1 : 0;
    case WM_JOB_DECRYPTION_PASSWORD:
        return showDecryptionPassword(*static_cast<DecryptionPasswordRequest*>(request));
    case WM_JOB_FILE_ERROR:
        return showFileError(*static_cast<FileErrorRequest*>(request));
    default:
        return messages.defaultProcedure(window, message, wParam, lParam);
    }
}

bool MessageWindow::isFirstThread() const
{
    return platform().threads.currentThreadId() == firstThreadId_;
}

std::intptr_t MessageWindow::send(std::uint32_t message, void* request)
{
    return platform().messages.send(window_, message, reinterpret_cast<std::uintptr_t>(request),
                                    reinterpret_cast<std::intptr_t>(request));
}

} // namespace JobRunner
