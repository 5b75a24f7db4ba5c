#include "schedules/choices.h"

#include <sstream>

namespace Schedules
{

std::size_t Choices::choose(const std::vector<bool>& preempts)
{
    const std::size_t option = decide(made_, preempts);
    if (option != 0)
        unusual_[made_] = option;
    ++made_;
    return option;
}

std::string Choices::text() const
{
    std::ostringstream text;
    for (const auto& [decision, option] : unusual_)
        text << (text.tellp() > 0 ? " " : "") << decision << ':' << option;
    return text.str();
}

void Choices::startAgain()
{
    made_ = 0;
    unusual_.clear();
}

std::vector<bool> AllChoices::costsOf(const std::vector<bool>& preempts) const
{
    if (counted_ == Counted::Preemptions)
        return preempts;
    std::vector<bool> costs(preempts.size(), true);
    costs.front() = false;
    return costs;
}

std::size_t AllChoices::decide(std::size_t decision, const std::vector<bool>& preempts)
{
    if (decision < path_.size())
        return path_[decision].option;
    unsigned spent = 0;
    if (!path_.empty())
    {
        const Decision& last = path_.back();
        spent = last.spentBefore + (last.costs[last.option] ? 1 : 0);
    }
    path_.push_back({costsOf(preempts), 0, spent});
    return 0;
}

bool AllChoices::next()
{
    startAgain();
    for (; !path_.empty(); path_.pop_back())
    {
        Decision& last = path_.back();
        while (++last.option < last.costs.size())
            if (!last.costs[last.option] || last.spentBefore < bound_)
                return true;
    }
    return false;
}

RandomChoices::RandomChoices(unsigned seed) : random_(seed), oneIn_(2U << random_() % 6) {}

std::size_t RandomChoices::decide(std::size_t, const std::vector<bool>& preempts)
{
    // Where nobody is interrupted the next thread is anyone's; interruptions are frequent in one schedule, rare in
    // the next.
    const bool interrupts = preempts.size() > 1 && preempts[1];
    if (interrupts && random_() % oneIn_ != 0)
        return 0;
    return random_() % preempts.size();
}

ToldChoices::ToldChoices(const std::string& text)
{
    std::istringstream words(text);
    std::size_t decision = 0;
    std::size_t option = 0;
    char colon = 0;
    while (words >> decision >> colon >> option)
        told_[decision] = option;
}

std::size_t ToldChoices::decide(std::size_t decision, const std::vector<bool>& preempts)
{
    const auto found = told_.find(decision);
    return found == told_.end() || found->second >= preempts.size() ? 0 : found->second;
}

} // namespace Schedules
