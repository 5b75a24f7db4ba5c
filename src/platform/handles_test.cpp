#include "platform/each_system.h"
#include "platform/handles.h"
#include "platform/processes.h"
#include "platform/threads.h"

namespace
{

class Handles : public EachSystem
{
protected:
    Platform::Handles& handles() { return system().handles; }

    /// A handle that nothing signals while the test runs: that of the running process.
    Platform::Handle neverSignalled()
    {
        Platform::Processes& processes = system().processes;
        if (GetParam() == Kind::Fake)
            fake().processes.start({processes.currentId()});
        return processes.open(Platform::AccessSynchronize, false, processes.currentId());
    }
};

TEST_P(Handles, aWaitOnNoHandleFailsAtOnce)
{
    EXPECT_EQ(handles().wait(nullptr, Platform::WaitForever, false), Platform::WaitFailed);
    EXPECT_EQ(handles().waitOrMessage(nullptr, Platform::WaitForever, Platform::AllInput), Platform::WaitFailed);
}

TEST_P(Handles, aWaitEndsWhenItsTimeIsOver)
{
    const Platform::Handle handle = neverSignalled();
    ASSERT_NE(handle, nullptr);
    const std::uint32_t start = system().threads.tickCount();
    EXPECT_EQ(handles().wait(handle, 50, false), Platform::WaitTimedOut);
    EXPECT_EQ(handles().waitOrMessage(handle, 50, Platform::AllInput), Platform::WaitTimedOut);
    EXPECT_GE(system().threads.tickCount() - start, 80u); // the clock of the system counts in steps
    EXPECT_TRUE(handles().close(handle));
}

TEST_P(Handles, aWaitWithoutTimeOnlyLooks)
{
    const Platform::Handle handle = neverSignalled();
    EXPECT_EQ(handles().wait(handle, 0, false), Platform::WaitTimedOut);
    EXPECT_EQ(handles().waitOrMessage(handle, 0, Platform::AllInput), Platform::WaitTimedOut);
    EXPECT_TRUE(handles().close(handle));
}

TEST_P(Handles, aHandleIsClosedOnce)
{
    const Platform::Handle handle = neverSignalled();
    EXPECT_TRUE(handles().close(handle));
    EXPECT_FALSE(handles().close(handle));
    EXPECT_FALSE(handles().close(nullptr));
    EXPECT_EQ(handles().wait(handle, Platform::WaitForever, false), Platform::WaitFailed);
}

TEST_P(Handles, theLastErrorIsWhatWasSet)
{
    handles().setLastError(1234);
    EXPECT_EQ(handles().lastError(), 1234u);
    handles().setLastError(0);
    EXPECT_EQ(handles().lastError(), 0u);
}

INSTANTIATE_EACH_SYSTEM(Handles);

TEST(NativeHandles, eachThreadHasALastErrorOfItsOwn)
{
    Platform::System& system = Platform::nativeSystem();
    system.handles.setLastError(1234);
    std::uint32_t seen = 0;
    system.threads
        .start(
            [&]
            {
                system.handles.setLastError(77);
                seen = system.handles.lastError();
            })
        ->wait();
    EXPECT_EQ(seen, 77u);
    EXPECT_EQ(system.handles.lastError(), 1234u);
}

TEST(FakeHandles, aMessageThatWaitsEndsAWait)
{
    Fakes::FakePlatform fake;
    const Platform::Handle handle = fake.handles.add(L"something");
    fake.messages.waiting = 1;
    EXPECT_EQ(fake.handles.waitOrMessage(handle, 100, Platform::AllInput), Platform::WaitMessage);
    EXPECT_EQ(fake.threads.elapsed(), 0);
    EXPECT_TRUE(fake.messages.dispatchOne());
    EXPECT_EQ(fake.handles.waitOrMessage(handle, 100, Platform::AllInput), Platform::WaitTimedOut);
    EXPECT_EQ(fake.threads.elapsed(), 100);
}

} // namespace
