#include "platform/thread_messages.h"

#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <set>
#include <thread>

namespace Platform
{

namespace
{

struct ThreadQueue;

/// A message under way. It lives on the stack of the sender, who waits until it is answered.
struct Request
{
    WindowHandle window;
    std::uint32_t message;
    std::uintptr_t wParam;
    std::intptr_t lParam;
    ThreadQueue& sender;
    std::intptr_t result = 0;
    bool answered = false;
};

struct ThreadQueue
{
    std::deque<Request*> requests;
    std::condition_variable changed;
    bool quit = false;
};

struct Window
{
    std::thread::id owner;
    WindowProcedure* procedure;
    std::wstring className;
    bool ending = false;
};

} // namespace

class ThreadMessages::State
{
public:
    bool registerClass(const std::wstring& className)
    {
        const std::lock_guard guard(lock_);
        return classes_.insert(className).second;
    }

    void unregisterClass(const std::wstring& className)
    {
        const std::lock_guard guard(lock_);
        for (const auto& [handle, window] : windows_)
            if (window.className == className)
                return;
        classes_.erase(className);
    }

    WindowHandle createWindow(const std::wstring& className, WindowProcedure& procedure)
    {
        const std::lock_guard guard(lock_);
        if (!classes_.contains(className))
            return nullptr;
        // A number that is never used again: the handle of a window that ended means no other window.
        const WindowHandle handle = reinterpret_cast<WindowHandle>(++lastHandle_);
        windows_.emplace(handle, Window{std::this_thread::get_id(), &procedure, className});
        return handle;
    }

    void destroyWindow(WindowHandle handle)
    {
        std::unique_lock guard(lock_);
        const auto found = windows_.find(handle);
        if (found == windows_.end() || found->second.owner != std::this_thread::get_id() || found->second.ending)
            return;
        found->second.ending = true;
        WindowProcedure& procedure = *found->second.procedure;
        guard.unlock();
        procedure.onMessage(handle, WindowDestroyed, 0, 0);
        guard.lock();
        windows_.erase(handle);
        releaseSenders(handle);
    }

    std::intptr_t send(WindowHandle handle, std::uint32_t message, std::uintptr_t wParam, std::intptr_t lParam)
    {
        std::unique_lock guard(lock_);
        const auto found = windows_.find(handle);
        if (found == windows_.end())
            return 0;
        if (found->second.owner == std::this_thread::get_id())
        {
            WindowProcedure& procedure = *found->second.procedure;
            guard.unlock();
            return procedure.onMessage(handle, message, wParam, lParam);
        }
        ThreadQueue& receiver = queues_[found->second.owner];
        ThreadQueue& sender = queues_[std::this_thread::get_id()];
        Request request{handle, message, wParam, lParam, sender};
        receiver.requests.push_back(&request);
        receiver.changed.notify_all();
        // A thread that waits here answers for its own windows; else two threads that send to each other never end.
        while (!request.answered)
            serveOrWait(guard, sender);
        return request.result;
    }

    void postQuit()
    {
        const std::lock_guard guard(lock_);
        queues_[std::this_thread::get_id()].quit = true;
    }

    bool dispatchOne()
    {
        std::unique_lock guard(lock_);
        ThreadQueue& queue = queues_[std::this_thread::get_id()];
        if (queue.requests.empty())
            return false;
        serveOrWait(guard, queue);
        return true;
    }

    void runLoop()
    {
        std::unique_lock guard(lock_);
        ThreadQueue& queue = queues_[std::this_thread::get_id()];
        while (!queue.requests.empty() || !queue.quit)
            serveOrWait(guard, queue);
        queue.quit = false;
    }

private:
    /// Answers its sender even when the procedure throws, so that nobody is stranded.
    class Answer
    {
    public:
        Answer(std::unique_lock<std::mutex>& guard, Request& request) : guard_(guard), request_(request)
        {
            guard_.unlock();
        }
        ~Answer()
        {
            guard_.lock();
            answer(request_);
        }
        Answer(const Answer&) = delete;
        Answer& operator=(const Answer&) = delete;

    private:
        std::unique_lock<std::mutex>& guard_;
        Request& request_;
    };

    static void answer(Request& request)
    {
        request.answered = true;
        request.sender.changed.notify_all();
    }

    void serveOrWait(std::unique_lock<std::mutex>& guard, ThreadQueue& queue)
    {
        if (queue.requests.empty())
        {
            queue.changed.wait(guard);
            return;
        }
        Request& request = *queue.requests.front();
        queue.requests.pop_front();
        WindowProcedure& procedure = *windows_.at(request.window).procedure;
        const Answer answering(guard, request);
        request.result = procedure.onMessage(request.window, request.message, request.wParam, request.lParam);
    }

    void releaseSenders(WindowHandle handle)
    {
        for (auto& [thread, queue] : queues_)
            std::erase_if(queue.requests,
                          [handle](Request* request)
                          {
                              if (request->window != handle)
                                  return false;
                              answer(*request);
                              return true;
                          });
    }

    std::mutex lock_;
    std::set<std::wstring> classes_;
    std::map<WindowHandle, Window> windows_;
    std::map<std::thread::id, ThreadQueue> queues_;
    std::uintptr_t lastHandle_ = 0;
};

ThreadMessages::ThreadMessages() : state_(std::make_shared<State>()) {}
ThreadMessages::~ThreadMessages() = default;

bool ThreadMessages::registerClass(const std::wstring& className)
{
    return state_->registerClass(className);
}

void ThreadMessages::unregisterClass(const std::wstring& className)
{
    state_->unregisterClass(className);
}

WindowHandle ThreadMessages::createWindow(const std::wstring& className, const std::wstring&,
                                          WindowProcedure& procedure)
{
    return state_->createWindow(className, procedure);
}

void ThreadMessages::destroyWindow(WindowHandle window)
{
    state_->destroyWindow(window);
}

std::intptr_t ThreadMessages::defaultProcedure(WindowHandle, std::uint32_t, std::uintptr_t, std::intptr_t)
{
    return 0;
}

std::intptr_t ThreadMessages::send(WindowHandle window, std::uint32_t message, std::uintptr_t wParam,
                                   std::intptr_t lParam)
{
    return state_->send(window, message, wParam, lParam);
}

void ThreadMessages::postQuit()
{
    state_->postQuit();
}

bool ThreadMessages::dispatchOne()
{
    return state_->dispatchOne();
}

void ThreadMessages::runLoop()
{
    state_->runLoop();
}

} // namespace Platform
