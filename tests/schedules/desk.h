#pragma once

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace Schedules
{

enum class Button
{
    Pause, ///< the same for Resume
    Cancel,
    Nothing, ///< a key or a close box that the window does not listen to
};

/// A window with buttons.
class Clickable
{
public:
    virtual void click(Button button) = 0;

protected:
    ~Clickable() = default;
};

/// A question to the user.
struct Prompt
{
    enum class Kind
    {
        FileError,
        DecryptionPassword,
        EncryptionPassword,
        Deletion,
    };

    Kind kind;
    std::wstring file;
    /// The window that takes the answer; null for a dialog that only waits for it.
    void* window = nullptr;
    bool claimed = false; ///< a user is about to answer
    bool answered = false;
    int answer = 0;
};

/// Where the user sits: the windows of the job as he sees them. Any thread.
class Desk
{
public:
    void windowCame(Clickable& window);
    void windowShows(bool visible, bool paused);
    void windowWent();

    void promptCame(std::shared_ptr<Prompt> prompt);
    void promptWent(const std::shared_ptr<Prompt>& prompt);
    /// Blocks until the prompt is answered.
    int awaitAnswer(Prompt& prompt);
    void answer(Prompt& prompt, int answer);

    void jobIsOver();

    // The users.

    /// Clicks once the progress window can be seen and is paused or not, as `paused` says; false when the job is over
    /// before.
    bool clickWhenSeen(bool paused, Button button);
    /// Clicks so many times as soon as there is a window.
    bool clickAtOnce(Button button, int times);
    /// The newest question that nobody answers yet, claimed for the caller; null when the job is over.
    std::shared_ptr<Prompt> nextPrompt();

private:
    std::mutex lock_;
    std::condition_variable changed_;
    Clickable* window_ = nullptr;
    bool visible_ = false;
    bool paused_ = false;
    std::vector<std::shared_ptr<Prompt>> prompts_;
    bool over_ = false;
};

} // namespace Schedules
