#include "bridges/file_conflict_events_handler.h"
#include "bridges/progress_events_handler.h"
#include "fakes/fake_call_log.h"
#include "fakes/fake_gui_events.h"
#include "platform/system_with.h"
#include "schedules/explore.h"
#include "schedules/scheduler.h"
#include "schedules/staged_shell.h"
#include "schedules/staged_threads.h"
#include "schedules/staged_view.h"
#include "schedules/staged_views.h"
#include "windows/progress/progress_window.h"

#include <cstdio>
#include <gtest/gtest.h>

using namespace Schedules;
using namespace JobRunner;

// The progress window with its bridges alone, so small that every schedule with two preemptions can be run.

namespace
{

/// What the engine reports between the start and the end of the operation.
using Reports = std::function<void(ProgressEventsHandler&, FileConflictEventsHandler&, Record&)>;

struct WindowPlan
{
    const char* name;
    Reports reports;
    std::vector<Button> clicks;
};

std::ostream& operator<<(std::ostream& out, const WindowPlan& plan)
{
    return out << plan.name;
}

class WindowStage
{
public:
    explicit WindowStage(const WindowPlan& plan)
        : plan_(plan), system_(Platform::systemWith(Platform::nativeSystem(), threads_, shell_))
    {
        Platform::setPlatform(&system_);
        setViewFactory(&views_);
    }
    ~WindowStage()
    {
        setViewFactory(nullptr);
        Platform::setPlatform(nullptr);
    }
    WindowStage(const WindowStage&) = delete;
    WindowStage& operator=(const WindowStage&) = delete;

    std::string perform()
    {
        nameThisThread("engine");
        ProgressWindow window;
        ProgressEventsHandler progress(&window);
        FileConflictEventsHandler conflict(&window, &gui_);
        const auto user = threads_.start([this] { click(); });
        progress.OnOperationStarted();
        plan_.reports(progress, conflict, record_);
        progress.OnOperationFinished();
        desk_.jobIsOver();
        user->wait();
        record_.complaints.addUnless(record_.openViews == 0 && record_.madeViews == 1, "a window is left open");
        return record_.complaints.text();
    }

    void expectUpToDate()
    {
        if (StagedView* const view = record_.view)
            view->expectUpToDate();
    }

private:
    void click()
    {
        nameThisThread("user");
        for (const Button button : plan_.clicks)
            desk_.clickAtOnce(button, 1);
    }

    const WindowPlan& plan_;
    Record record_;
    Desk desk_;
    Fakes::CallLog log_;
    Fakes::FakeGuiEvents gui_;
    StagedThreads threads_;
    StagedShell shell_{log_};
    Platform::System system_;
    StagedViews views_{false, desk_, record_};
};

std::string runWindow(const WindowPlan& plan, Choices& choices)
{
    std::string complaints;
    const Outcome outcome = Scheduler::run(choices,
                                           [&plan, &complaints](Scheduler& scheduler)
                                           {
                                               WindowStage stage(plan);
                                               scheduler.whenQuiet = [&stage] { stage.expectUpToDate(); };
                                               complaints = stage.perform();
                                               scheduler.whenQuiet = nullptr;
                                           });
    return outcome.end == End::Complete ? complaints : outcome.story;
}

void report(ProgressEventsHandler& progress, Record& record, std::uint64_t done)
{
    const bool cancelledBefore = record.cancelled;
    const unsigned pausesBefore = record.pauses;
    const int answer = progress.OnFileProgress(done, 4 << 20);
    record.complaints.addUnless(pausesBefore % 2 == 0 || record.pauses != pausesBefore,
                                "the engine has gone on through a pause");
    record.complaints.addUnless(!cancelledBefore || answer == 0, "a cancel is lost");
}

const WindowPlan Plans[] = {
    {"pausedAndResumedBetweenTwoReports",
     [](ProgressEventsHandler& progress, FileConflictEventsHandler&, Record& record)
     {
         report(progress, record, 2 << 20);
         report(progress, record, 4 << 20);
     },
     {Button::Pause, Button::Pause}},
    {"reportedAtLeisure",
     [](ProgressEventsHandler& progress, FileConflictEventsHandler&, Record& record)
     {
         report(progress, record, 2 << 20);
         Platform::platform().threads.sleep(1000);
         report(progress, record, 4 << 20);
         Platform::platform().threads.sleep(1000);
     },
     {Button::Pause, Button::Pause}},
    {"cancelledAtAReport",
     [](ProgressEventsHandler& progress, FileConflictEventsHandler&, Record& record)
     {
         report(progress, record, 2 << 20);
         report(progress, record, 4 << 20);
     },
     {Button::Cancel}},
    {"closedWhileItsButtonIsPressed",
     [](ProgressEventsHandler&, FileConflictEventsHandler&, Record&) {},
     {Button::Pause, Button::Cancel}},
    {"hiddenByAPromptWhileItsButtonIsPressed",
     [](ProgressEventsHandler& progress, FileConflictEventsHandler& conflict, Record& record)
     {
         conflict.OnFileError(L"a", L"", L"no");
         report(progress, record, 4 << 20);
     },
     {Button::Cancel}},
    {"openedWhileTheListIsTakenOnAnotherThread",
     [](ProgressEventsHandler& progress, FileConflictEventsHandler&, Record& record)
     {
         const auto list = Platform::platform().threads.start([&progress] { progress.OnFileListBuilt(0, 4 << 20); });
         report(progress, record, 4 << 20);
         list->wait();
     },
     {}},
};

} // namespace

class SmallWindow : public testing::TestWithParam<WindowPlan>
{
};

INSTANTIATE_TEST_SUITE_P(WindowSchedules, SmallWindow, testing::ValuesIn(Plans),
                         [](const auto& plan) { return plan.param.name; });

TEST_P(SmallWindow, endsInOrderInEverySchedule)
{
    const WindowPlan& plan = GetParam();
    const Exploration exploration = exploreAll([&plan](Choices& choices) { return runWindow(plan, choices); },
                                               static_cast<unsigned>(secondsFor("JOBRUNNER_SCHEDULE_PREEMPTIONS", 2)),
                                               Counted::Preemptions, secondsFor("JOBRUNNER_SCHEDULE_SECONDS", 3));
    std::fputs(toldOf(exploration).c_str(), stdout);
    EXPECT_EQ(exploration.failure, "");
}
