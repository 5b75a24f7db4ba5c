#include "jobprocess/main_thread.h"

#include "commands/command.h"
#include "platform/platform.h"
#include "platform/threads.h"

namespace JobRunner
{

using Halden::ZEL::Telemetry::EventTrackerPtr;
using Platform::platform;

namespace
{

std::wstring textOf(const wchar_t* text)
{
    return text ? text : L"";
}

} // namespace

MainThread::MainThread(EventTrackerPtr tracker) : tracker_(std::move(tracker)), dialogs_(tracker_), window_(dialogs_) {}

MainThread::MainThread(EventTrackerPtr tracker, IModalDialogs& dialogs)
    : tracker_(std::move(tracker)), dialogs_(tracker_), window_(dialogs)
{
}

MainThread::~MainThread() = default;

void MainThread::run()
{
    command_ = CreateCommand();
    // Intended: a window that cannot be made is not noticed. The job runs, no dialog opens, and nothing ends the loop.
    window_.create();
    const auto jobThread = platform().threads.start(
        [this]
        {
            platform().threads.enterMultithreadedApartment();
            command_->Run();
            closeMessageWindow();
        });
    // Intended: nor is a job thread that cannot be started. Nothing ends the loop then, either.
    platform().messages.runLoop();
    if (jobThread)
        jobThread->wait();
    command_.reset();
}

bool MainThread::showEncryptionPasswordWindow(std::wstring& password, std::wstring& keyFile, std::uint32_t& algorithm,
                                              std::uint32_t& destiny, std::wstring& riddle)
{
    EncryptionPasswordRequest request{password, keyFile, algorithm, destiny, riddle};
    const bool confirmed = window_.showEncryptionPassword(request);
    password = request.password;
    keyFile = request.keyFile;
    algorithm = request.algorithm;
    destiny = request.destiny;
    riddle = request.riddle;
    return confirmed;
}

int MainThread::showDecryptionPasswordWindow(const wchar_t* fileName, const wchar_t* passwordToFillIn,
                                             const wchar_t* keyFileToFillIn, std::uint32_t mode,
                                             IDpvKeyValidation* validator, std::wstring& password,
                                             std::wstring& keyFile)
{
    // The out texts start as the caller's own, so that an answer other than 0 leaves them as they are.
    DecryptionPasswordRequest request{
        textOf(fileName), textOf(passwordToFillIn), textOf(keyFileToFillIn), mode, validator, password, keyFile};
    const int answer = window_.showDecryptionPassword(request);
    password = request.passwordOut;
    keyFile = request.keyFileOut;
    return answer;
}

int MainThread::showFileErrorWindow(const wchar_t* title, const wchar_t* header, const wchar_t* source,
                                    const wchar_t* target, const wchar_t* message)
{
    FileErrorRequest request{textOf(title), textOf(header), textOf(source), textOf(target), textOf(message)};
    return window_.showFileError(request);
}

void MainThread::closeMessageWindow()
{
    window_.close();
}

} // namespace JobRunner
