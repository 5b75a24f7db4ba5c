#pragma once

#include "jobprocess/modal_dialogs.h"
#include "platform/messages.h"
#include "telemetry/i_event_tracker.h"

#include <cstdint>
#include <string>

namespace JobRunner
{

// Messages of the hidden window, known to this process only.
inline constexpr std::uint32_t WM_JOB_CLOSE = 2023;
inline constexpr std::uint32_t WM_JOB_ENCRYPTION_PASSWORD = 2024;
inline constexpr std::uint32_t WM_JOB_DECRYPTION_PASSWORD = 2025;
inline constexpr std::uint32_t WM_JOB_FILE_ERROR = 2026;

/// The hidden window of the first thread: through it any thread gets a dialog opened there and waits for the answer.
/// The blocking send is the only synchronisation: one thread sleeps while the other works on its request.
class MessageWindow final : public Platform::WindowProcedure
{
public:
    /// `dialogs` is not owned.
    explicit MessageWindow(IModalDialogs& dialogs);
    MessageWindow(const MessageWindow&) = delete;
    MessageWindow& operator=(const MessageWindow&) = delete;

    /// Makes the window on the calling thread, which becomes the first thread. False on failure. The window class
    /// stays registered until the process ends.
    bool create();
    /// Destroys the window and ends the first thread's message loop. Any thread; returns when the window is gone.
    void close();

    // The dialogs. Any thread; without a window another thread gets 0 at once.
    bool showEncryptionPassword(EncryptionPasswordRequest& request);
    int showDecryptionPassword(DecryptionPasswordRequest& request);
    int showFileError(FileErrorRequest& request);

    std::intptr_t onMessage(Platform::WindowHandle window, std::uint32_t message, std::uintptr_t wParam,
                            std::intptr_t lParam) override;

private:
    bool isFirstThread() const;
    std::intptr_t send(std::uint32_t message, void* request);

    std::wstring className_;
    Platform::WindowHandle window_ = nullptr;
    std::uint32_t firstThreadId_ = 0;
    IModalDialogs& dialogs_;
};

} // namespace JobRunner
