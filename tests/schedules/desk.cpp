#include "schedules/desk.h"

#include <algorithm>

namespace Schedules
{

void Desk::windowCame(Clickable& window)
{
    const std::lock_guard guard(lock_);
    window_ = &window;
    visible_ = paused_ = false;
    changed_.notify_all();
}

void Desk::windowShows(bool visible, bool paused)
{
    const std::lock_guard guard(lock_);
    visible_ = visible;
    paused_ = paused;
    changed_.notify_all();
}

void Desk::windowWent()
{
    const std::lock_guard guard(lock_);
    window_ = nullptr;
    visible_ = false;
}

void Desk::promptCame(std::shared_ptr<Prompt> prompt)
{
    const std::lock_guard guard(lock_);
    prompts_.push_back(std::move(prompt));
    changed_.notify_all();
}

void Desk::promptWent(const std::shared_ptr<Prompt>& prompt)
{
    const std::lock_guard guard(lock_);
    std::erase(prompts_, prompt);
}

int Desk::awaitAnswer(Prompt& prompt)
{
    std::unique_lock guard(lock_);
    changed_.wait(guard, [&] { return prompt.answered; });
    return prompt.answer;
}

void Desk::answer(Prompt& prompt, int answer)
{
    const std::lock_guard guard(lock_);
    prompt.answer = answer;
    prompt.answered = true;
    changed_.notify_all();
}

void Desk::jobIsOver()
{
    const std::lock_guard guard(lock_);
    over_ = true;
    changed_.notify_all();
}

bool Desk::clickWhenSeen(bool paused, Button button)
{
    std::unique_lock guard(lock_);
    changed_.wait(guard, [&] { return over_ || (window_ && visible_ && paused_ == paused); });
    if (over_)
        return false;
    window_->click(button);
    return true;
}

bool Desk::clickAtOnce(Button button, int times)
{
    std::unique_lock guard(lock_);
    changed_.wait(guard, [&] { return over_ || window_; });
    if (over_)
        return false;
    for (; times > 0; --times)
        window_->click(button);
    return true;
}

std::shared_ptr<Prompt> Desk::nextPrompt()
{
    std::unique_lock guard(lock_);
    std::shared_ptr<Prompt> next;
    const auto found = [&]
    {
        const auto newest =
            std::find_if(prompts_.rbegin(), prompts_.rend(), [](const auto& prompt) { return !prompt->claimed; });
        if (newest != prompts_.rend())
            next = *newest;
        return over_ || next;
    };
    changed_.wait(guard, found);
    if (next)
        next->claimed = true;
    return next;
}

} // namespace Schedules
