#pragma once

#include <atomic>
#include <map>
#include <mutex>
#include <string>

namespace Schedules
{

class StagedView;

/// A lock that is no point of the schedule: for a few instructions of a test's own.
class QuietLock
{
public:
    void lock()
    {
        while (busy_.test_and_set())
            ;
    }
    void unlock() { busy_.clear(); }

private:
    std::atomic_flag busy_;
};

/// What goes wrong in a run, told from any thread.
class Complaints
{
public:
    void add(const std::string& complaint)
    {
        const std::lock_guard guard(lock_);
        if (text_.size() < 2000)
            text_ += complaint + '\n';
    }
    void addUnless(bool good, const char* complaint)
    {
        if (!good)
            add(complaint);
    }
    /// After the threads have ended.
    const std::string& text() const { return text_; }

private:
    QuietLock lock_;
    std::string text_;
};

/// What the user has done and what came of it, as the rules of a job need it. Any thread.
struct Record
{
    Complaints complaints;

    /// A click on Cancel has been taken.
    std::atomic<bool> cancelled{false};
    /// How often Pause was taken: an odd number while the job is paused. Counted after a pause has come into force and
    /// before a resume does.
    std::atomic<unsigned> pauses{0};

    std::atomic<StagedView*> view{nullptr}; ///< the one that lives
    std::atomic<int> openViews{0};
    std::atomic<int> madeViews{0};
    std::atomic<int> openPrompts{0};
    std::atomic<int> prompts{0}; ///< of the engine's threads, each of which hides the progress window
    std::atomic<int> hides{0};
    std::atomic<int> progressCalls{0};
    std::atomic<int> stops{0}; ///< answers of 0 to the progress of a file
    std::atomic<int> finishedFiles{0};
    std::atomic<int> failedFiles{0};
    std::atomic<int> liveObjects{0}; ///< of the engine
    /// What the user's last answer to the error of this file means to the engine.
    void setFileErrorCode(const std::wstring& file, int code)
    {
        const std::lock_guard guard(lock_);
        fileErrorCodes_[file] = code;
    }
    int lastFileErrorCode(const std::wstring& file)
    {
        const std::lock_guard guard(lock_);
        return fileErrorCodes_[file];
    }

private:
    QuietLock lock_;
    std::map<std::wstring, int> fileErrorCodes_;
};

} // namespace Schedules
