#include "platform/handles.h"

#include "platform/messages.h"
#include "platform/platform.h"
#include "platform/processes.h"
#include "platform/threads.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace Platform
{

namespace
{

class NativeMessageWait : public testing::Test
{
protected:
    void SetUp() override
    {
        while (messages_.dispatchOne())
            continue;
        never_ = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    }
    void TearDown() override { EXPECT_TRUE(handles_.close(never_)); }

    std::uint32_t look() { return handles_.waitOrMessage(never_, 0, AllInput); }

    Handles& handles_ = nativeSystem().handles;
    Messages& messages_ = nativeSystem().messages;
    Handle never_ = nullptr;
};

TEST_F(NativeMessageWait, endsWithAMessageThatWasPosted)
{
    EXPECT_EQ(look(), WaitTimedOut);
    PostThreadMessageW(GetCurrentThreadId(), WM_USER, 0, 0);
    EXPECT_EQ(handles_.waitOrMessage(never_, WaitForever, AllInput), WaitMessage);
    EXPECT_TRUE(messages_.dispatchOne());
    EXPECT_FALSE(messages_.dispatchOne());
    EXPECT_EQ(look(), WaitTimedOut);
}

TEST_F(NativeMessageWait, endsWithAMessageFromAnotherThreadWhileItWaits)
{
    Threads& threads = nativeSystem().threads;
    const DWORD waiting = GetCurrentThreadId();
    const auto thread = threads.start(
        [&]
        {
            threads.sleep(50);
            PostThreadMessageW(waiting, WM_USER, 0, 0);
        });
    EXPECT_EQ(handles_.waitOrMessage(never_, WaitForever, AllInput), WaitMessage);
    thread->wait();
    EXPECT_TRUE(messages_.dispatchOne());
}

TEST_F(NativeMessageWait, prefersTheHandle)
{
    PostThreadMessageW(GetCurrentThreadId(), WM_USER, 0, 0);
    SetEvent(never_);
    EXPECT_EQ(handles_.waitOrMessage(never_, WaitForever, AllInput), WaitSignalled);
    EXPECT_TRUE(messages_.dispatchOne());
}

TEST_F(NativeMessageWait, looksAtMessagesOnlyWhenAsked)
{
    PostThreadMessageW(GetCurrentThreadId(), WM_USER, 0, 0);
    EXPECT_EQ(handles_.wait(never_, 0, false), WaitTimedOut);
    EXPECT_TRUE(messages_.dispatchOne());
}

TEST(NativeLastError, ofTheSystemIsSeenUntilTheNextCall)
{
    EXPECT_FALSE(nativeSystem().handles.close(nullptr));
    EXPECT_EQ(nativeSystem().handles.lastError(), static_cast<std::uint32_t>(ERROR_INVALID_HANDLE));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_HANDLE));
}

// Kept: the priority is asked for with what is no thread. So what is put back is no priority, and a thread that was
// raised stays where it is.
TEST(NativePriority, cannotBeReadWithTheFunctionAndNotBePutBack)
{
    Threads& threads = nativeSystem().threads;
    threads
        .start(
            [&]
            {
                EXPECT_NE(threads.currentThreadFunction(), nullptr);
                EXPECT_EQ(threads.currentThreadFunction(), reinterpret_cast<void*>(&GetCurrentThread));
                const int saved = threads.priority(threads.currentThreadFunction());
                EXPECT_EQ(saved, PriorityErrorReturn);
                EXPECT_TRUE(threads.setPriority(threads.currentThread(), PriorityHighest));
                EXPECT_FALSE(threads.setPriority(threads.currentThread(), saved));
                EXPECT_EQ(GetThreadPriority(GetCurrentThread()), THREAD_PRIORITY_HIGHEST);
            })
        ->wait();
}

} // namespace

} // namespace Platform
