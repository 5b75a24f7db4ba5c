#include "schedules/job_stage.h"

#include "bridges/module_factories.h"
#include "commands/command.h"
#include "fakes/fake_documents.h"
#include "jobprocess/main_thread.h"
#include "platform/system_with.h"
#include "platform/thread_messages.h"
#include "schedules/scheduler.h"
#include "schedules/staged_dialogs.h"
#include "schedules/staged_shell.h"
#include "schedules/staged_threads.h"
#include "schedules/staged_tracker.h"
#include "schedules/staged_views.h"

namespace Schedules
{

using namespace JobRunner;

namespace
{

const std::wstring JobFile = L"/job.json";

Fakes::JobAnswers documentOf(JobKind kind)
{
    Fakes::JobAnswers document;
    document.files = {L"/files/*"};
    document.encryption = kind == JobKind::Encrypt || kind == JobKind::EncryptAndWipe;
    document.destiny = kind == JobKind::EncryptAndWipe ? VaultCore::DestinyWipe : VaultCore::DestinyKeep;
    document.sfxEncryption = kind == JobKind::EncryptSfx;
    document.decryption = kind == JobKind::Decrypt;
    document.decryptionPath = L"";
    document.wipe = kind == JobKind::Wipe;
    document.deletionMethod = VaultCore::DeletionMethodWipe;
    return document;
}

/// All that one job needs, in the places where the program looks for it.
class Stage
{
public:
    explicit Stage(const JobPlan& plan);
    ~Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    /// The whole job and its users, on the calling thread as the first one.
    void perform();
    /// While nobody runs.
    void expectUpToDate();
    /// After the job.
    std::string complaints();

private:
    void act(const std::vector<Act>& acts);
    void answerPrompts();
    int answerTo(const Prompt& prompt);
    int answerToFileError(const std::wstring& file);

    const JobPlan& plan_;
    Record record_;
    Desk desk_;
    Answers answers_;
    Fakes::CallLog log_;
    StagedThreads threads_;
    Platform::ThreadMessages messages_;
    StagedBoxes boxes_{desk_};
    StagedShell shell_{log_};
    Platform::System system_;
    StagedViews views_{plan_.paced, desk_, record_};
    Fakes::FakeZelPlatform documents_{log_};
    StagedEngine engine_;
    std::shared_ptr<StagedTracker> tracker_ = std::make_shared<StagedTracker>();
};

Stage::Stage(const JobPlan& plan)
    : plan_(plan), answers_(plan.answers),
      system_(Platform::systemWith(Platform::nativeSystem(), threads_, messages_, boxes_, shell_)),
      engine_(plan.engine, record_)
{
    Platform::setPlatform(&system_);
    setViewFactory(&views_);
    setZelPlatformFactory(Fakes::FakeZelPlatform::createFactory);
    setVaultCoreFactory(StagedEngine::createFactory);
    shell_.arguments = {L"jobrunner", JobFile};
    documents_.documents[JobFile] = documentOf(plan.kind);
    views_.encryptionUsers.push_back(
        [declines = plan.answers.declines](Fakes::FakeEncryptionPasswordView& view)
        {
            view.type(RightPassword, RightPassword);
            return !declines && view.proceed();
        });
}

Stage::~Stage()
{
    setVaultCoreFactory(nullptr);
    setZelPlatformFactory(nullptr);
    setViewFactory(nullptr);
    Platform::setPlatform(nullptr);
}

void Stage::perform()
{
    nameThisThread("first");
    std::vector<std::unique_ptr<Platform::Thread>> users;
    for (const std::vector<Act>& acts : plan_.users)
        users.push_back(threads_.start([this, &acts] { act(acts); }));
    users.push_back(threads_.start([this] { answerPrompts(); }));
    {
        StagedDialogs dialogs(desk_, record_, plan_.dialogsWithLoop);
        MainThread(tracker_, dialogs).run();
    }
    desk_.jobIsOver();
    for (const auto& user : users)
        user->wait();
}

void Stage::act(const std::vector<Act>& acts)
{
    nameThisThread("user");
    for (const Act what : acts)
    {
        bool goesOn = true;
        switch (what)
        {
        case Act::Pause:
            goesOn = desk_.clickWhenSeen(false, Button::Pause);
            break;
        case Act::Resume:
            goesOn = desk_.clickWhenSeen(true, Button::Pause);
            break;
        case Act::Cancel:
            goesOn = desk_.clickWhenSeen(false, Button::Cancel);
            break;
        case Act::PauseTwice:
            goesOn = desk_.clickAtOnce(Button::Pause, 2);
            break;
        case Act::HastyCancel:
            goesOn = desk_.clickAtOnce(Button::Cancel, 1);
            break;
        case Act::Key:
            goesOn = desk_.clickAtOnce(Button::Nothing, 1);
        }
        if (!goesOn)
            return;
    }
}

void Stage::answerPrompts()
{
    nameThisThread("answering user");
    while (const std::shared_ptr<Prompt> prompt = desk_.nextPrompt())
        answerPrompt(desk_, *prompt, answerTo(*prompt));
}

int Stage::answerTo(const Prompt& prompt)
{
    switch (prompt.kind)
    {
    case Prompt::Kind::FileError:
        return answerToFileError(prompt.file);
    case Prompt::Kind::EncryptionPassword:
        return answers_.declines ? 1 : 0;
    case Prompt::Kind::Deletion:
        return answers_.declines ? Platform::BoxAnswerNo : Platform::BoxAnswerYes;
    case Prompt::Kind::DecryptionPassword:
        break;
    }
    if (answers_.passwords.empty())
        return AnswerRightPassword;
    const int answer = answers_.passwords.front();
    answers_.passwords.pop_front();
    return answer;
}

int Stage::answerToFileError(const std::wstring& file)
{
    int answer = 1;
    std::deque<int>& planned = answers_.fileErrors[file];
    if (!planned.empty())
    {
        answer = planned.front();
        planned.pop_front();
    }
    const int codes[] = {VaultCore::FileErrorRepeat, VaultCore::FileErrorSkip, VaultCore::FileErrorAbort};
    record_.setFileErrorCode(file, codes[answer]);
    return answer;
}

void Stage::expectUpToDate()
{
    if (StagedView* const view = record_.view)
        view->expectUpToDate();
}

std::string Stage::complaints()
{
    Complaints& complaints = record_.complaints;
    const bool asksFirst = plan_.kind != JobKind::Decrypt;
    const bool ran = !asksFirst || !plan_.answers.declines;
    complaints.addUnless(record_.madeViews == (ran ? 1 : 0), "the job did not make one window");
    complaints.addUnless(record_.openViews == 0, "a window is left open");
    complaints.addUnless(record_.openPrompts == 0, "a prompt is left open");
    complaints.addUnless(record_.hides == record_.prompts, "the window was not hidden once for each prompt");
    complaints.addUnless(record_.liveObjects == 0, "an object of the engine was not released");
    complaints.addUnless(record_.stops == 0 || record_.cancelled, "the job was stopped and nobody wanted it");
    complaints.addUnless(tracker_->cancelled() == (record_.stops > 0), "the job did not end as it was cancelled");
    const std::vector<std::int64_t> counts{record_.finishedFiles, record_.failedFiles};
    complaints.addUnless(!ran || tracker_->fileCounts() == counts, "the files were counted wrongly");
    return complaints.text();
}

} // namespace

std::string runJob(const JobPlan& plan, Choices& choices)
{
    std::string complaints;
    const Outcome outcome = Scheduler::run(choices,
                                           [&plan, &complaints](Scheduler& scheduler)
                                           {
                                               Stage stage(plan);
                                               scheduler.whenQuiet = [&stage] { stage.expectUpToDate(); };
                                               stage.perform();
                                               scheduler.whenQuiet = nullptr;
                                               complaints = stage.complaints();
                                           });
    if (outcome.end == End::Deadlock)
        return "a deadlock:\n" + outcome.story;
    if (outcome.end == End::Endless)
        return "a run without an end:\n" + outcome.story;
    return complaints;
}

std::string runJobFreely(const JobPlan& plan)
{
    Stage stage(plan);
    stage.perform();
    return stage.complaints();
}

} // namespace Schedules
