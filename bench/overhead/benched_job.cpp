#include "overhead/benched_job.h"

#include "bridges/module_factories.h"
#include "fakes/fake_documents.h"
#include "fakes/fake_message_boxes.h"
#include "fakes/fake_shell.h"
#include "fakes/recording_tracker.h"
#include "jobprocess/main_thread.h"
#include "platform/platform.h"
#include "platform/system_with.h"
#include "windows/file_error/i_file_error_window_view.h"

#include <memory>
#include <utility>

namespace Benchmarks
{

namespace
{

const std::wstring JobFile = L"job.json";

/// Names the job file on the command line; the display's texts are made by the real system.
class JobShell : public Fakes::FakeShell
{
public:
    JobShell(Fakes::CallLog& log, wchar_t separator) : FakeShell(log, separator) { arguments = {L"program", JobFile}; }

    std::wstring compactPath(const std::wstring& path, std::uint32_t size) override
    {
        return Platform::nativeSystem().shell.compactPath(path, size);
    }
};

class SkippingDialogs : public JobRunner::IModalDialogs
{
public:
    bool showEncryptionPassword(JobRunner::EncryptionPasswordRequest&) override { return false; }
    int showDecryptionPassword(JobRunner::DecryptionPasswordRequest&) override { return 2; }
    int showFileError(const JobRunner::FileErrorRequest&) override { return JobRunner::FileErrorSkipFile; }
};

} // namespace

void runJob(std::function<void(const Fakes::EngineCallbacks&)> work)
{
    Fakes::CallLog log;
    Fakes::FakeZelPlatform documents(log);
    documents.documents[JobFile].wipe = true;
    documents.documents[JobFile].deletionMethod = VaultCore::DeletionMethodWipe;
    Fakes::FakeEngine engine(log);
    engine.script = std::move(work);
    Fakes::FakeMessageBoxes boxes(log);
    boxes.answer(Platform::BoxAnswerYes);
    Platform::System& native = Platform::nativeSystem();
    JobShell shell(log, native.separator);
    Platform::System system = Platform::systemWith(native, boxes, shell);

    Platform::setPlatform(&system);
    JobRunner::setZelPlatformFactory(Fakes::FakeZelPlatform::createFactory);
    JobRunner::setVaultCoreFactory(Fakes::FakeEngine::createFactory);
    SkippingDialogs dialogs;
    JobRunner::MainThread(std::make_shared<Fakes::RecordingTracker>(), dialogs).run();
    Platform::setPlatform(nullptr);
}

} // namespace Benchmarks
