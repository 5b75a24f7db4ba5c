#include "jobprocess/modal_dialogs.h"

#include "fakes/fake_views.h"
#include "fakes/recording_tracker.h"
#include "windows/file_error/i_file_error_window_view.h"
#include "windows/framework/view_factory.h"

#include <gtest/gtest.h>

namespace JobRunner
{

namespace
{

using Calls = std::vector<std::wstring>;

/// A view that writes its calls and its end into the log that the tracker writes into.
class LoggingView final : public IFileErrorWindowView
{
public:
    explicit LoggingView(Fakes::CallLog& log) : log_(log) {}
    ~LoggingView() override { log_.add(L"view.destroyed"); }

    void setTitle(const wchar_t* text) override { log_.add(std::wstring(L"setTitle ") + text); }
    void setHeader(const wchar_t* text) override { log_.add(std::wstring(L"setHeader ") + text); }
    void setSource(const wchar_t* path) override { log_.add(std::wstring(L"setSource ") + path); }
    void setTarget(const wchar_t* path) override { log_.add(std::wstring(L"setTarget ") + path); }
    void setMessage(const wchar_t* text) override { log_.add(std::wstring(L"setMessage ") + text); }
    int doModal() override
    {
        log_.add(L"doModal");
        return FileErrorSkipFile;
    }

private:
    Fakes::CallLog& log_;
};

class LoggingViews final : public Fakes::FakeViewFactory
{
public:
    explicit LoggingViews(Fakes::CallLog& log) : log_(log) { setViewFactory(this); }
    ~LoggingViews() override { setViewFactory(nullptr); }

    std::unique_ptr<IFileErrorWindowView> createFileErrorWindowView() override
    {
        return std::make_unique<LoggingView>(log_);
    }

private:
    Fakes::CallLog& log_;
};

TEST(AFileErrorDialog, reportsAfterTheAnswerAndBeforeItsViewEnds)
{
    Fakes::CallLog log;
    const LoggingViews views(log);
    EXPECT_EQ(
        ModalDialogs(std::make_shared<Fakes::RecordingTracker>(log)).showFileError({L"t", L"h", L"a", L"b", L"m"}), 1);
    EXPECT_EQ(log.calls(),
              (std::vector<std::wstring>{L"setTitle t", L"setHeader h", L"setSource a", L"setTarget b", L"setMessage m",
                                         L"doModal", L"TrackViewEvent(err_file_error, m, none)",
                                         L"TrackViewEvent(set_user_action_skip, , none)", L"view.destroyed"}));
}

TEST(AFileErrorDialog, getsAnEmptyTargetThatDiffersFromItsSource)
{
    Fakes::CallLog log;
    const LoggingViews views(log);
    ModalDialogs dialogs(std::make_shared<Fakes::RecordingTracker>());
    dialogs.showFileError({L"", L"", L"a", L"", L"m"});
    EXPECT_EQ(log.callsOf(L"setTarget"), (std::vector<std::wstring>{L"setTarget "}));
    dialogs.showFileError({L"", L"", L"", L"", L"m"});
    EXPECT_EQ(log.callsOf(L"setTarget").size(), 1U);
}

class FileErrorDialogTest : public testing::Test
{
protected:
    int ask(const FileErrorRequest& request) { return ModalDialogs(tracker_).showFileError(request); }
    std::vector<std::wstring> told() { return views_.factory.fileErrors.back()->calls; }

    Fakes::FakeViews views_;
    std::shared_ptr<Fakes::RecordingTracker> tracker_ = std::make_shared<Fakes::RecordingTracker>();
};

TEST_F(FileErrorDialogTest, anEmptyTitleKeepsTheDialogsOwnTexts)
{
    ask({L"", L"header", L"a", L"b", L"broken"});
    EXPECT_EQ(told(), (Calls{L"setSource a", L"setTarget b", L"setMessage broken", L"doModal"}));
}

TEST_F(FileErrorDialogTest, aTitleBringsItsHeaderEvenWhenThatIsEmpty)
{
    ask({L"title", L"", L"a", L"b", L"broken"});
    EXPECT_EQ(told(), (Calls{L"setTitle title", L"setHeader ", L"setSource a", L"setTarget b", L"setMessage broken",
                             L"doModal"}));
}

TEST_F(FileErrorDialogTest, anEqualTargetIsLeftOutAndACaseDifferenceIsNoEquality)
{
    ask({L"", L"", L"a", L"a", L"m"});
    EXPECT_EQ(told(), (Calls{L"setSource a", L"setMessage m", L"doModal"}));
    ask({L"", L"", L"a", L"A", L"m"});
    EXPECT_EQ(told(), (Calls{L"setSource a", L"setTarget A", L"setMessage m", L"doModal"}));
}

TEST_F(FileErrorDialogTest, eachAnswerIsReportedAfterTheError)
{
    const std::pair<int, const wchar_t*> answers[] = {
        {0, L"set_user_action_try"}, {1, L"set_user_action_skip"}, {2, L"set_user_action_abort"}};
    for (const auto& [answer, action] : answers)
    {
        tracker_->clear();
        views_.factory.fileErrorAnswers = {answer};
        EXPECT_EQ(ask({L"", L"", L"a", L"a", L"broken"}), answer);
        EXPECT_EQ(tracker_->calls(), (Calls{L"TrackViewEvent(err_file_error, broken, none)",
                                            L"TrackViewEvent(" + std::wstring(action) + L", , none)"}));
    }
}

TEST_F(FileErrorDialogTest, anyOtherAnswerSendsNoSecondEvent)
{
    views_.factory.fileErrorAnswers = {7};
    EXPECT_EQ(ask({L"", L"", L"a", L"a", L"broken"}), 7);
    EXPECT_EQ(tracker_->calls().size(), 1u);
}

} // namespace

} // namespace JobRunner
