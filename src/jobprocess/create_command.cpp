#include "bridges/module_factories.h"
#include "commands/command.h"
#include "commands/dc_decrypt_command.h"
#include "commands/decrypt_command.h"
#include "commands/delete_command.h"
#include "commands/encrypt_command.h"
#include "commands/encrypt_sfx_command.h"
#include "interfaces/process/exception.h"
#include "jobprocess/main_thread.h"
#include "platform/platform.h"
#include "platform/shell.h"
#include "systemutilities/shell_utilities.h"
#include "telemetry/usage_events.h"

namespace JobRunner
{

using namespace Halden::ZEL::Telemetry;
using ZelPlatform::IJobRunnerDocument;

namespace
{

using Document = ReleasePtr<IJobRunnerDocument>;

struct JobKind
{
    bool (IJobRunnerDocument::*isKind)();
    const wchar_t* label;
    std::unique_ptr<Command> (*create)(Document, IGuiEvents*, EventTrackerPtr);
};

template <class CommandOfKind>
std::unique_ptr<Command> create(Document document, IGuiEvents* gui, EventTrackerPtr tracker)
{
    return std::make_unique<CommandOfKind>(std::move(document), gui, std::move(tracker));
}

/// In the order of the questions; the first kind that answers true wins.
const JobKind Kinds[] = {
    {&IJobRunnerDocument::IsEncryption, UsageEvent::OperationEncryption, create<EncryptCommand>},
    {&IJobRunnerDocument::IsSfxEncryption, UsageEvent::OperationSfxEncryption, create<EncryptSfxCommand>},
    {&IJobRunnerDocument::IsDecryption, UsageEvent::OperationDecryption, create<DecryptCommand>},
    {&IJobRunnerDocument::IsDoubleClickDecryption, UsageEvent::OperationDoubleClickDecryption,
     create<DcDecryptCommand>},
    {&IJobRunnerDocument::IsWipe, UsageEvent::OperationWipe, create<DeleteCommand>},
};

} // namespace

std::unique_ptr<Command> MainThread::CreateCommand()
{
    const auto arguments = Halden::SystemUtilities::GetCommandLineArguments();
    if (arguments.size() < 2)
        throw Exception{L"This application should not be called directly. It is designed for internal purposes."};
    const std::wstring& path = arguments[1];
    const auto factory = createZelPlatformFactory();
    const ReleasePtr<ZelPlatform::IJobDocumentStore> store(factory->CreateJobDocumentStore());
    Document document(store->LoadJobDocument(path.c_str()));
    if (!document)
        throw Exception{L"Cannot load configuration file: " + path};
    // From here on the document is the only copy of the job's description. A file that stays does no harm.
    Platform::platform().shell.deleteFile(path);
    for (const JobKind& kind : Kinds)
    {
        if (!(*document.*kind.isKind)())
            continue;
        tracker_->TrackViewEvent(ProcessTag, kind.label, NoEventValue);
        return kind.create(std::move(document), this, tracker_);
    }
    throw Exception{L"Unknown type of the thread operation in configuration file"};
}

} // namespace JobRunner
