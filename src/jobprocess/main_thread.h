#pragma once

#include "interfaces/process/gui_events.h"
#include "jobprocess/message_window.h"
#include "jobprocess/modal_dialogs.h"
#include "telemetry/i_event_tracker.h"

#include <memory>

namespace JobRunner
{

class Command;

/// Runs the job's command on a thread of its own, while the first thread pumps messages and opens the dialogs.
class MainThread final : public IGuiEvents
{
public:
    /// No window and no thread exist until `run`.
    explicit MainThread(Halden::ZEL::Telemetry::EventTrackerPtr tracker);
    /// The same with dialogs of the caller, which are not owned.
    MainThread(Halden::ZEL::Telemetry::EventTrackerPtr tracker, IModalDialogs& dialogs);
    ~MainThread();
    MainThread(const MainThread&) = delete;
    MainThread& operator=(const MainThread&) = delete;

    /// The whole job, from the configuration file to the end of the job thread. First thread; throws `Exception`
    /// when the configuration file gives no command.
    void run();

    bool showEncryptionPasswordWindow(std::wstring& password, std::wstring& keyFile, std::uint32_t& algorithm,
                                      std::uint32_t& destiny, std::wstring& riddle) override;
    int showDecryptionPasswordWindow(const wchar_t* fileName, const wchar_t* passwordToFillIn,
                                     const wchar_t* keyFileToFillIn, std::uint32_t mode, IDpvKeyValidation* validator,
                                     std::wstring& password, std::wstring& keyFile) override;
    int showFileErrorWindow(const wchar_t* title, const wchar_t* header, const wchar_t* source, const wchar_t* target,
                            const wchar_t* message) override;
    void closeMessageWindow() override;

private:
    std::unique_ptr<Command> CreateCommand();

    Halden::ZEL::Telemetry::EventTrackerPtr tracker_;
    ModalDialogs dialogs_;
    MessageWindow window_;
    std::unique_ptr<Command> command_;
};

} // namespace JobRunner
