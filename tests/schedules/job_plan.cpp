#include "schedules/job_plan.h"

#include "schedules/staged_dialogs.h"

#include <random>

namespace Schedules
{

namespace
{

class Dice
{
public:
    explicit Dice(unsigned seed) : random_(seed) {}
    bool oneIn(unsigned count) { return random_() % count == 0; }
    int below(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }

private:
    std::mt19937 random_;
};

StagedFile randomFile(Dice& dice, JobKind kind, int index)
{
    StagedFile file;
    file.name = L"file " + std::to_wstring(index);
    file.reports = dice.below(5);
    file.failures = dice.oneIn(3) ? 1 + dice.below(2) : 0;
    file.locked = kind == JobKind::Decrypt && dice.oneIn(2);
    file.destinyReports = kind == JobKind::EncryptAndWipe || dice.oneIn(4) ? dice.below(4) : 0;
    file.workTime = dice.oneIn(2) ? 70 * static_cast<std::uint32_t>(1 + dice.below(4)) : 0;
    return file;
}

std::vector<Act> randomActs(Dice& dice)
{
    std::vector<Act> acts;
    for (int left = dice.below(4); left > 0; --left)
    {
        switch (dice.below(6))
        {
        case 0:
        case 1: // whoever pauses goes on
            acts.insert(acts.end(), {Act::Pause, Act::Resume});
            break;
        case 2:
            acts.push_back(Act::PauseTwice);
            break;
        case 3:
            acts.push_back(Act::Key);
            break;
        case 4:
            acts.push_back(Act::Cancel);
            break;
        default:
            acts.push_back(Act::HastyCancel);
        }
    }
    return acts;
}

} // namespace

JobPlan randomPlan(unsigned seed)
{
    Dice dice(seed);
    JobPlan plan;
    plan.kind = static_cast<JobKind>(dice.below(5));
    const int files = dice.below(4);
    for (int index = 0; index < files; ++index)
    {
        plan.engine.files.push_back(randomFile(dice, plan.kind, index));
        for (int answers = dice.below(3); answers > 0; --answers)
            plan.answers.fileErrors[plan.engine.files.back().name].push_back(dice.below(3));
    }
    const int passwords[] = {AnswerRightPassword, AnswerWrongPassword, 1, 2};
    for (int answers = dice.below(4); answers > 0; --answers)
        plan.answers.passwords.push_back(passwords[dice.below(4)]);
    plan.answers.declines = dice.oneIn(16);
    plan.engine.listOnOwnThread = dice.oneIn(2);
    plan.engine.asksAhead = dice.oneIn(2);
    plan.dialogsWithLoop = !dice.oneIn(4);
    plan.paced = !dice.oneIn(4);
    for (int users = 1 + dice.below(2); users > 0; --users)
        plan.users.push_back(randomActs(dice));
    return plan;
}

} // namespace Schedules
