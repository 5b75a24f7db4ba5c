#include "platform/each_system.h"
#include "platform/messages.h"
#include "platform/thread_messages.h"
#include "platform/threads.h"

#include <algorithm>
#include <atomic>
#include <functional>
#include <stdexcept>
#include <thread>

namespace
{

constexpr wchar_t ClassName[] = L"JobRunner_MessagesTest";
constexpr std::uint32_t Ask = 2024;
constexpr std::uint32_t Close = 2023;

/// Answers `Ask` with what the test says, `Close` by ending the window, and its end by ending the loop.
class Receiver : public Platform::WindowProcedure
{
public:
    explicit Receiver(Platform::Messages& messages) : messages_(messages) {}

    std::intptr_t onMessage(Platform::WindowHandle window, std::uint32_t message, std::uintptr_t wParam,
                            std::intptr_t lParam) override
    {
        if (message == Ask && onAsk)
            return onAsk(wParam, lParam);
        if (message == Close)
            messages_.destroyWindow(window);
        if (message == Platform::WindowDestroyed)
        {
            ++destroyed;
            messages_.postQuit();
            return 0;
        }
        return messages_.defaultProcedure(window, message, wParam, lParam);
    }

    std::function<std::intptr_t(std::uintptr_t, std::intptr_t)> onAsk;
    int destroyed = 0;

private:
    Platform::Messages& messages_;
};

class Messages : public EachSystem
{
protected:
    void SetUp() override { ASSERT_TRUE(messages().registerClass(ClassName)); }
    void TearDown() override { messages().unregisterClass(ClassName); }

    Platform::Messages& messages() { return system().messages; }
    Platform::Threads& threads() { return system().threads; }
    Platform::WindowHandle createWindow(Receiver& receiver)
    {
        return messages().createWindow(ClassName, L"title", receiver);
    }
};

TEST_P(Messages, aClassIsRegisteredOnceUntilItIsGone)
{
    EXPECT_FALSE(messages().registerClass(ClassName));
    messages().unregisterClass(ClassName);
    EXPECT_TRUE(messages().registerClass(ClassName));
}

TEST_P(Messages, aWindowOfAnUnknownClassIsNotCreated)
{
    Receiver receiver(messages());
    EXPECT_EQ(messages().createWindow(L"JobRunner_NoSuchClass", L"", receiver), nullptr);
}

TEST_P(Messages, aMessageOnTheOwningThreadIsAnsweredAtOnce)
{
    Receiver receiver(messages());
    const Platform::WindowHandle window = createWindow(receiver);
    ASSERT_NE(window, nullptr);
    receiver.onAsk = [](std::uintptr_t wParam, std::intptr_t lParam)
    { return static_cast<std::intptr_t>(wParam) * 10 + lParam; };
    EXPECT_EQ(messages().send(window, Ask, 4, 2), 42);
    messages().destroyWindow(window);
    messages().runLoop();
}

TEST_P(Messages, aMessageFromAnotherThreadIsAnsweredOnTheOwningOne)
{
    Receiver receiver(messages());
    const Platform::WindowHandle window = createWindow(receiver);
    ASSERT_NE(window, nullptr);
    std::uint32_t answeredOn = 0;
    std::intptr_t result = 0;
    receiver.onAsk = [&](std::uintptr_t wParam, std::intptr_t lParam)
    {
        answeredOn = threads().currentThreadId();
        return static_cast<std::intptr_t>(wParam) - lParam;
    };
    const auto sender = threads().start(
        [&]
        {
            result = messages().send(window, Ask, 50, 8);
            messages().send(window, Close, 0, 0);
        });
    messages().runLoop();
    sender->wait();
    EXPECT_EQ(result, 42);
    EXPECT_EQ(answeredOn, threads().currentThreadId());
}

TEST_P(Messages, aSenderOfTheCloseMessageReturnsAndTheLoopEnds)
{
    Receiver receiver(messages());
    const Platform::WindowHandle window = createWindow(receiver);
    ASSERT_NE(window, nullptr);
    std::intptr_t result = -1;
    const auto sender = threads().start([&] { result = messages().send(window, Close, 0, 0); });
    messages().runLoop();
    sender->wait();
    EXPECT_EQ(result, 0);
    EXPECT_EQ(receiver.destroyed, 1);
}

TEST_P(Messages, aWindowIsToldOfItsEndWhileItIsStillThere)
{
    Receiver receiver(messages());
    const Platform::WindowHandle window = createWindow(receiver);
    ASSERT_NE(window, nullptr);
    messages().destroyWindow(window);
    EXPECT_EQ(receiver.destroyed, 1);
    messages().runLoop();
    messages().destroyWindow(window);
    EXPECT_EQ(receiver.destroyed, 1);
}

TEST_P(Messages, aMessageToNoWindowOrToOneThatEndedAnswersZero)
{
    Receiver receiver(messages());
    receiver.onAsk = [](std::uintptr_t, std::intptr_t) { return 5; };
    const Platform::WindowHandle window = createWindow(receiver);
    ASSERT_NE(window, nullptr);
    messages().destroyWindow(window);
    messages().runLoop();
    EXPECT_EQ(messages().send(window, Ask, 0, 0), 0);
    EXPECT_EQ(messages().send(nullptr, Ask, 0, 0), 0);
}

TEST_P(Messages, aLoopThatWasToldToQuitBeforeItBeganEndsAtOnce)
{
    messages().postQuit();
    messages().runLoop();
}

TEST_P(Messages, aWindowAnswersOneMessageAtATime)
{
    constexpr int Senders = 4;
    constexpr int Sends = 25;
    Receiver receiver(messages());
    const Platform::WindowHandle window = createWindow(receiver);
    ASSERT_NE(window, nullptr);
    int answered = 0;
    int inside = 0;
    int mostInside = 0;
    receiver.onAsk = [&](std::uintptr_t, std::intptr_t)
    {
        mostInside = std::max(mostInside, ++inside);
        --inside;
        return ++answered;
    };
    std::vector<std::unique_ptr<Platform::Thread>> senders;
    for (int sender = 0; sender < Senders; ++sender)
        senders.push_back(threads().start(
            [&]
            {
                for (int send = 0; send < Sends; ++send)
                    messages().send(window, Ask, 0, 0);
            }));
    const auto closer = threads().start(
        [&]
        {
            for (const auto& sender : senders)
                sender->wait();
            messages().send(window, Close, 0, 0);
        });
    messages().runLoop();
    closer->wait();
    EXPECT_EQ(answered, Senders * Sends);
    EXPECT_EQ(mostInside, 1);
}

TEST_P(Messages, sendersThatWaitForAWindowThatEndsAreReleasedWithZero)
{
    Receiver receiver(messages());
    receiver.onAsk = [](std::uintptr_t, std::intptr_t) { return 0; };
    const Platform::WindowHandle window = createWindow(receiver);
    ASSERT_NE(window, nullptr);
    std::atomic<std::intptr_t> sum{0};
    std::vector<std::unique_ptr<Platform::Thread>> senders;
    for (int sender = 0; sender < 4; ++sender)
        senders.push_back(threads().start([&] { sum += messages().send(window, Close, 0, 0); }));
    messages().runLoop();
    for (const auto& sender : senders)
        sender->wait();
    EXPECT_EQ(sum, 0);
    EXPECT_EQ(receiver.destroyed, 1);
}

TEST_P(Messages, aThreadThatWaitsForAnAnswerAnswersForItsOwnWindow)
{
    Receiver outer(messages());
    const Platform::WindowHandle window = createWindow(outer);
    ASSERT_NE(window, nullptr);
    std::intptr_t result = 0;
    const auto sender = threads().start(
        [&]
        {
            Receiver inner(messages());
            inner.onAsk = [](std::uintptr_t, std::intptr_t) { return 40; };
            const Platform::WindowHandle own = createWindow(inner);
            outer.onAsk = [&](std::uintptr_t, std::intptr_t) { return messages().send(own, Ask, 0, 0) + 2; };
            result = messages().send(window, Ask, 0, 0);
            messages().destroyWindow(own);
            messages().send(window, Close, 0, 0);
        });
    messages().runLoop();
    sender->wait();
    EXPECT_EQ(result, 42);
}

INSTANTIATE_EACH_SYSTEM(Messages);

TEST(ThreadMessages, aSenderIsReleasedWhenTheProcedureThrows)
{
    Platform::ThreadMessages messages;
    messages.registerClass(ClassName);
    Receiver receiver(messages);
    receiver.onAsk = [](std::uintptr_t, std::intptr_t) -> std::intptr_t { throw std::runtime_error("broken"); };
    const Platform::WindowHandle window = messages.createWindow(ClassName, L"", receiver);
    std::intptr_t result = -1;
    std::thread sender([&] { result = messages.send(window, Ask, 0, 0); });
    EXPECT_THROW(messages.runLoop(), std::runtime_error);
    sender.join();
    EXPECT_EQ(result, 0);
}

TEST(ThreadMessages, onlyTheOwningThreadEndsAWindow)
{
    Platform::ThreadMessages messages;
    messages.registerClass(ClassName);
    Receiver receiver(messages);
    receiver.onAsk = [](std::uintptr_t, std::intptr_t) { return 7; };
    const Platform::WindowHandle window = messages.createWindow(ClassName, L"", receiver);
    std::thread([&] { messages.destroyWindow(window); }).join();
    EXPECT_EQ(receiver.destroyed, 0);
    EXPECT_EQ(messages.send(window, Ask, 0, 0), 7);
}

TEST(FakeMessages, registeringAndCreatingFailWhenTheTestSaysSo)
{
    Fakes::FakePlatform fake;
    Receiver receiver(fake.messages);
    fake.messages.failRegisterClass = true;
    EXPECT_FALSE(fake.messages.registerClass(ClassName));
    fake.messages.failRegisterClass = false;
    fake.messages.failCreateWindow = true;
    EXPECT_TRUE(fake.messages.registerClass(ClassName));
    EXPECT_EQ(fake.messages.createWindow(ClassName, L"title", receiver), nullptr);
    EXPECT_TRUE(fake.log.contains(L"createWindow JobRunner_MessagesTest title"));
}

} // namespace
