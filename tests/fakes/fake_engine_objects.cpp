#include "fakes/fake_engine_objects.h"

namespace Fakes
{

void FakeOperationEvents::SetFileListBuilderEvents(VaultCore::IFileListBuilderEvents* events)
{
    log(L"SetFileListBuilderEvents");
    callbacks.fileList = events;
}

void FakeOperationEvents::SetOverallProgressEvents(VaultCore::IOverallProgressEvents* events)
{
    log(L"SetOverallProgressEvents");
    callbacks.overall = events;
}

void FakeOperationEvents::SetFileProgressEvents(VaultCore::IFileProgressEvents* events)
{
    log(L"SetFileProgressEvents");
    callbacks.progress = events;
}

void FakeOperationEvents::SetDestinyProgressEvents(VaultCore::IFileProgressEvents* events)
{
    log(L"SetDestinyProgressEvents");
    callbacks.destiny = events;
}

void FakeOperationEvents::SetFileConflictEvents(VaultCore::IFileConflictEvents* events)
{
    log(L"SetFileConflictEvents");
    callbacks.conflict = events;
}

void FakeDeletionOptions::SetMethod(std::uint32_t method)
{
    log(L"SetMethod(" + std::to_wstring(method) + L")");
}

void FakeDeleter::Start(VaultCore::IFileList* files, VaultCore::IDeletionOptions*, VaultCore::IOperationEvents* events)
{
    log(L"Start");
    engine_.startedWith = files;
    if (engine_.onStart)
        engine_.onStart();
    const EngineCallbacks callbacks = static_cast<FakeOperationEvents*>(events)->callbacks;
    thread_ = std::thread([this, callbacks] { engine_.work(callbacks); });
}

bool FakeDeleter::IsFinished()
{
    log(L"IsFinished");
    if (questions_++ < engine_.questionsUntilFinished)
        return false;
    if (thread_.joinable())
        thread_.join();
    return true;
}

FakeDeleter::~FakeDeleter()
{
    if (thread_.joinable())
        thread_.join();
}

} // namespace Fakes
