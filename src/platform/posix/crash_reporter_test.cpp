#include "platform/posix/crash_reporter.h"

#include <gtest/gtest.h>

#include <future>
#include <thread>

using namespace Platform;
using namespace std::chrono_literals;

namespace
{

CrashReporter* current = nullptr;
std::promise<void>* gate = nullptr;
ExceptionRecord reported;
std::thread::id reportedOn;
bool ranHere = false;

std::int32_t note(const ExceptionRecord& record)
{
    reported = record;
    reportedOn = std::this_thread::get_id();
    ranHere = current->runsHere();
    return ExecuteHandler;
}

std::int32_t waitAtTheGate(const ExceptionRecord&)
{
    gate->get_future().wait();
    return ExecuteHandler;
}

std::int32_t showABox(const ExceptionRecord&)
{
    current->boxIsShown();
    gate->get_future().wait_for(100ms); // the user takes more time than the report may
    return ExecuteHandler;
}

std::int32_t fail(const ExceptionRecord&)
{
    current->giveUp();
    gate->get_future().wait();
    return ExecuteHandler;
}

/// One reporter, whose filter may go on at the end of the test.
class CrashReporterTest : public testing::Test
{
protected:
    CrashReporterTest() { gate = &opened_; }
    ~CrashReporterTest() override { opened_.set_value(); }

    bool reportWith(CrashFilter filter, std::chrono::milliseconds patience)
    {
        reporter_ = std::make_unique<CrashReporter>(filter, patience);
        current = reporter_.get();
        return reporter_->report({ExceptionAccessViolation, 0x401000});
    }

private:
    std::promise<void> opened_;
    std::unique_ptr<CrashReporter> reporter_;
};

} // namespace

TEST_F(CrashReporterTest, runsTheFilterOnAThreadOfItsOwn)
{
    EXPECT_TRUE(reportWith(note, 5s));
    EXPECT_EQ(reported.code, ExceptionAccessViolation);
    EXPECT_EQ(reported.address, 0x401000u);
    EXPECT_NE(reportedOn, std::this_thread::get_id());
    EXPECT_TRUE(ranHere);
    EXPECT_FALSE(current->runsHere());
}

TEST_F(CrashReporterTest, losesPatienceWithAFilterThatDoesNotComeBack)
{
    EXPECT_FALSE(reportWith(waitAtTheGate, 30ms));
}

TEST_F(CrashReporterTest, waitsForTheUserWithoutLimit)
{
    EXPECT_TRUE(reportWith(showABox, 30ms));
}

TEST_F(CrashReporterTest, doesNotWaitForAFilterThatHasGivenUp)
{
    EXPECT_FALSE(reportWith(fail, 1h));
}

TEST_F(CrashReporterTest, endsWithoutACrash)
{
    EXPECT_NO_THROW(CrashReporter(note, 5s));
}
