#pragma once

#include <cstddef>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace Schedules
{

/// Decides which thread goes on wherever several could.
class Choices
{
public:
    virtual ~Choices() = default;

    /// The index of one option. Option 0 is the plain one: the thread that runs goes on, or the next in the row. An
    /// option that `preempts` takes the turn from a thread that could go on.
    std::size_t choose(const std::vector<bool>& preempts);
    /// What was decided other than plainly, as "17:2 40:1": the number of the decision and its option.
    std::string text() const;

protected:
    virtual std::size_t decide(std::size_t decision, const std::vector<bool>& preempts) = 0;
    void startAgain();

private:
    std::size_t made_ = 0;
    std::map<std::size_t, std::size_t> unusual_;
};

/// What counts against the bound of an exhaustive exploration.
enum class Counted
{
    Preemptions, ///< taking the turn from a thread that could go on
    Deviations,  ///< anything but the plain option, which leaves fewer schedules
};

/// Every schedule with at most so many preemptions or deviations, one after the other.
class AllChoices final : public Choices
{
public:
    AllChoices(unsigned bound, Counted counted) : bound_(bound), counted_(counted) {}

    /// Goes on to the next schedule, after one has run to its end. False when there is none left.
    bool next();

private:
    struct Decision
    {
        std::vector<bool> costs;
        std::size_t option;
        unsigned spentBefore;
    };

    std::size_t decide(std::size_t decision, const std::vector<bool>& preempts) override;
    std::vector<bool> costsOf(const std::vector<bool>& preempts) const;

    const unsigned bound_;
    const Counted counted_;
    std::vector<Decision> path_;
};

/// One schedule by chance; the same seed gives the same one.
class RandomChoices final : public Choices
{
public:
    explicit RandomChoices(unsigned seed);

private:
    std::size_t decide(std::size_t decision, const std::vector<bool>& preempts) override;

    std::mt19937 random_;
    unsigned oneIn_; ///< how rarely the turn is taken, of the seed as well
};

/// The schedule that a `text` tells.
class ToldChoices final : public Choices
{
public:
    explicit ToldChoices(const std::string& text);

private:
    std::size_t decide(std::size_t decision, const std::vector<bool>& preempts) override;

    std::map<std::size_t, std::size_t> told_;
};

} // namespace Schedules
