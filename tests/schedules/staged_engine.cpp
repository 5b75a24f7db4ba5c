#include "schedules/staged_engine.h"

#include "platform/platform.h"
#include "platform/threads.h"
#include "schedules/staged_dialogs.h"
#include "schedules/staged_key.h"
#include "schedules/staged_threads.h"

namespace Schedules
{

using namespace VaultCore;
using Platform::platform;

namespace
{

constexpr std::uint32_t Failed = 1;
constexpr int Abort = 4;
constexpr int Skip = 2;

} // namespace

void StagedEngine::start(const EngineCallbacks& callbacks)
{
    callbacks_ = callbacks;
    thread_ = platform().threads.start([this] { work(); });
}

void StagedEngine::waitForTheEnd()
{
    if (thread_)
        thread_->wait();
    thread_.reset();
}

void StagedEngine::work()
{
    nameThisThread("engine");
    std::unique_ptr<Platform::Thread> list;
    if (plan_.listOnOwnThread)
        list = platform().threads.start([this] { makeList(); });
    callbacks_.overall->OnOperationStarted();
    record_.complaints.addUnless(record_.openViews == 1, "the operation has started without a window");
    if (list)
        list->wait();
    else
        makeList();
    std::unique_ptr<Platform::Thread> asking;
    if (plan_.asksAhead)
        asking = platform().threads.start([this] { askAhead(); });
    for (std::size_t index = 0; index < plan_.files.size(); ++index)
    {
        if (asking && index == 1)
            asking->wait();
        const StagedFile& file = plan_.files[index];
        const bool asked = asking && index > 0;
        if (!workOn(file, asked ? ahead_[index] : examine(file)))
            break;
    }
    if (asking)
        asking->wait();
    callbacks_.overall->OnOperationFinished();
    record_.complaints.addUnless(record_.openViews == 0, "the operation has finished and its window has not");
    finished_ = true;
}

void StagedEngine::makeList()
{
    if (plan_.listOnOwnThread)
        nameThisThread("list");
    std::uint64_t total = 0;
    for (const StagedFile& file : plan_.files)
    {
        record_.complaints.addUnless(callbacks_.fileList->OnFileListEntry(1, 2, 3) == 1, "an entry was refused");
        total += file.size;
    }
    callbacks_.fileList->OnFileListBuilt(0, total);
    record_.complaints.addUnless(record_.madeViews == 1, "the list was taken before the operation had started");
}

void StagedEngine::askAhead()
{
    nameThisThread("asking");
    ahead_.assign(plan_.files.size(), Verdict::Open);
    for (std::size_t index = 1; index < plan_.files.size(); ++index)
        ahead_[index] = examine(plan_.files[index]);
}

StagedEngine::Verdict StagedEngine::examine(const StagedFile& file)
{
    for (int failure = 0; failure < file.failures; ++failure)
    {
        ++record_.prompts;
        const int action = callbacks_.conflict->OnFileError(file.name.c_str(), L"", L"no");
        record_.complaints.addUnless(record_.lastFileErrorCode(file.name) == action,
                                     "the engine got another answer than the user gave");
        if (action == Abort)
            return Verdict::Stop;
        if (action == Skip)
            return Verdict::Skip;
    }
    return file.locked ? unlock(file) : Verdict::Open;
}

StagedEngine::Verdict StagedEngine::unlock(const StagedFile& file)
{
    const std::lock_guard guard(oneQuestion_);
    for (;;)
    {
        IKey* key = nullptr;
        ++record_.prompts;
        const int answer = callbacks_.passwords->ProvideKey(file.name.c_str(), &key);
        record_.complaints.addUnless((key != nullptr) == (answer == 0), "a key without an answer, or the reverse");
        if (answer == KeyIgnoreFile)
            return Verdict::Skip;
        if (answer == KeyCancelJob)
            return Verdict::Stop;
        const bool fits = static_cast<StagedKey*>(key)->password() == RightPassword;
        callbacks_.passwords->AddStoredKey(key);
        if (fits)
            return Verdict::Open;
    }
}

bool StagedEngine::workOn(const StagedFile& file, Verdict verdict)
{
    callbacks_.overall->OnFileStarted(file.name.c_str());
    bool goesOn = verdict != Verdict::Stop;
    if (verdict == Verdict::Open)
        goesOn = report(*callbacks_.progress, file.reports, file, true) &&
                 report(*callbacks_.destiny, file.destinyReports, file, false);
    finishFile(file, goesOn && verdict == Verdict::Open ? 0 : Failed);
    return goesOn;
}

bool StagedEngine::report(IFileProgressEvents& events, int reports, const StagedFile& file, bool countsStops)
{
    const std::uint64_t part = reports > 0 ? file.size / static_cast<unsigned>(reports) : 0;
    for (int step = 1; step <= reports; ++step)
    {
        if (file.workTime > 0)
            platform().threads.sleep(file.workTime);
        const bool cancelledBefore = record_.cancelled;
        const unsigned pausesBefore = record_.pauses;
        const int answer = events.OnFileProgress(part * static_cast<unsigned>(step), file.size);
        ++record_.progressCalls;
        record_.complaints.addUnless(pausesBefore % 2 == 0 || record_.pauses != pausesBefore,
                                     "the engine has gone on through a pause");
        record_.complaints.addUnless(!cancelledBefore || answer == 0, "a cancel is lost");
        if (answer != 0)
            continue;
        if (countsStops)
            ++record_.stops;
        return false;
    }
    return true;
}

void StagedEngine::finishFile(const StagedFile& file, std::uint32_t error)
{
    callbacks_.overall->OnFileFinished(&file, L"", error);
    ++(error == 0 ? record_.finishedFiles : record_.failedFiles);
}

} // namespace Schedules
