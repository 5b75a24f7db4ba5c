#include "bridges/progress_events_handler.h"
#include "fakes/fake_platform.h"
#include "fakes/fake_views.h"
#include "platform/system_with.h"
#include "windows/framework/view_factory.h"
#include "windows/progress/progress_window.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

using namespace Fakes;
using namespace JobRunner;

namespace
{

/// Events that let a test look around before each of their calls.
class WatchedThreads final : public FakeThreads
{
public:
    using FakeThreads::FakeThreads;

    std::function<void()> onSet = [] {};
    std::function<void()> onReset = [] {};
    std::function<void()> onWait = [] {};

    std::unique_ptr<Platform::Event> createEvent() override
    {
        return std::make_unique<WatchedEvent>(*this, FakeThreads::createEvent());
    }

private:
    class WatchedEvent final : public Platform::Event
    {
    public:
        WatchedEvent(WatchedThreads& owner, std::unique_ptr<Platform::Event> event)
            : owner_(owner), event_(std::move(event))
        {
        }
        void set() override
        {
            owner_.onSet();
            event_->set();
        }
        void reset() override
        {
            owner_.onReset();
            event_->reset();
        }
        void wait() override
        {
            owner_.onWait();
            event_->wait();
        }

    private:
        WatchedThreads& owner_;
        std::unique_ptr<Platform::Event> event_;
    };
};

class AnOrderOfReports : public testing::Test
{
protected:
    AnOrderOfReports() { Platform::setPlatform(&watched); }
    ~AnOrderOfReports() override { Platform::setPlatform(&platform.system()); }

    bool isOpen() { return !views.factory.progressViews.empty() && view().open(); }
    ProgressViewLog& view() { return *views.factory.progressViews.back(); }

    FakePlatform platform;
    WatchedThreads threads{platform.log};
    Platform::System watched = Platform::systemWith(platform.system(), threads);
    FakeViews views;
    ProgressWindow window;
};

} // namespace

TEST_F(AnOrderOfReports, hasTheWindowOpenWhenTheStartIsSignalled)
{
    bool openAtSet = false;
    threads.onSet = [&] { openAtSet = isOpen(); };
    ProgressEventsHandler bridge(&window);
    bridge.OnOperationStarted();
    EXPECT_TRUE(openAtSet);
}

TEST_F(AnOrderOfReports, hasTheWindowClosedWhenTheStartIsTakenBack)
{
    bool openAtReset = true;
    threads.onReset = [&] { openAtReset = isOpen(); };
    ProgressEventsHandler bridge(&window);
    bridge.OnOperationStarted();
    bridge.OnOperationFinished();
    EXPECT_FALSE(openAtReset);
}

TEST_F(AnOrderOfReports, waitsForTheStartBeforeItGivesTheTotalSize)
{
    std::wstring totalAtWait = L"not asked";
    threads.onWait = [&] { totalAtWait = view().last(L"setTotalBytes"); };
    ProgressEventsHandler bridge(&window);
    bridge.OnOperationStarted();
    bridge.OnFileListBuilt(0, 1000);
    EXPECT_NE(totalAtWait, L"not asked");
    EXPECT_NE(totalAtWait, L"1000");
    EXPECT_EQ(view().last(L"setTotalBytes"), L"1000");
}

TEST_F(AnOrderOfReports, showsAReportBeforeItWaitsForTheEndOfAPause)
{
    std::vector<std::wstring> shown;
    threads.onSleep = [&](std::uint32_t)
    {
        shown.push_back(view().last(L"setFileProgress"));
        window.togglePause();
    };
    ProgressEventsHandler bridge(&window);
    window.setHalfFileMode(true);
    bridge.OnOperationStarted();
    view().clear();
    window.togglePause();
    bridge.OnFileProgress(100, 100);
    view().clear();
    window.togglePause();
    bridge.OnDestinyProgress(50, 100);
    ASSERT_EQ(shown.size(), 2U);
    EXPECT_EQ(shown[0].find(L"wiping"), std::wstring::npos);
    EXPECT_NE(shown[0], L"");
    EXPECT_NE(shown[1].find(L"wiping"), std::wstring::npos);
}

TEST_F(AnOrderOfReports, takesAFileAsCompleteOnlyWhenDoneIsExactlyItsTotal)
{
    ProgressEventsHandler bridge(&window);
    EXPECT_EQ(bridge.OnFileProgress(101, 100), 1);
    EXPECT_EQ(bridge.OnFileProgress(1, 0), 1);
    EXPECT_EQ(bridge.processedBytes(), 0U);
}

namespace
{

/// A view that fails at each report of bytes while the test says so.
class FailingView final : public FakeProgressWindowView
{
public:
    FailingView(int operation, const bool& fails)
        : FakeProgressWindowView(std::make_shared<ProgressViewLog>(operation)), fails_(fails)
    {
    }
    void setElapsedBytes(std::uint64_t) override
    {
        if (fails_)
            throw std::runtime_error("view");
    }

private:
    const bool& fails_;
};

class FailingViews final : public FakeViewFactory
{
public:
    FailingViews() { setViewFactory(this); }
    ~FailingViews() override { setViewFactory(nullptr); }

    std::unique_ptr<IProgressWindowView> createProgressWindowView(int operation) override
    {
        if (fails)
            throw std::runtime_error("no view");
        return std::make_unique<FailingView>(operation, fails);
    }

    bool fails = false;
};

} // namespace

TEST_F(AnOrderOfReports, letsAFailureOfTheWindowOutToTheEngineAndCountsNothing)
{
    FailingViews failing;
    ProgressEventsHandler bridge(&window);
    bridge.OnOperationStarted();
    failing.fails = true;
    EXPECT_THROW(bridge.OnFileFinished(nullptr, nullptr, 0), std::runtime_error);
    EXPECT_THROW(bridge.OnFileFinished(nullptr, nullptr, 5), std::runtime_error);
    EXPECT_THROW(bridge.OnFileProgress(100, 100), std::runtime_error);
    EXPECT_EQ(bridge.processedFiles(), 0);
    EXPECT_EQ(bridge.failedFiles(), 0);
    EXPECT_EQ(bridge.processedBytes(), 0U);
    failing.fails = false;
    window.closeWindow(); // while the views are still there
}

TEST_F(AnOrderOfReports, signalsNoStartOfAWindowThatFails)
{
    FailingViews failing;
    failing.fails = true;
    bool set = false;
    threads.onSet = [&] { set = true; };
    ProgressEventsHandler bridge(&window);
    EXPECT_THROW(bridge.OnOperationStarted(), std::runtime_error);
    EXPECT_FALSE(set);
}
