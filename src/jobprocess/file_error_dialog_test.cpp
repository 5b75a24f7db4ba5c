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

} // namespace

} // namespace JobRunner
