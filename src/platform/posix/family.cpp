#include "platform/posix/family.h"

#include <sys/prctl.h>
#include <unistd.h>

#include <algorithm>
#include <tuple>

namespace Platform
{

void Family::onStarted(const ProcessRecord& process)
{
    const std::lock_guard guard(lock_);
    known_[process.id] = {process.started, thisProcess_, Origin::Family};
}

void Family::onEndSeen(std::uint32_t process, std::uint64_t now)
{
    const std::lock_guard guard(lock_);
    const auto found = known_.find(process);
    if (found == known_.end() || found->second.origin == Origin::Stranger)
        return;
    found->second.isEndSeen = true;
    lastEnd_ = {process, now};
}

bool Family::contains(const ProcessRecord& process)
{
    const std::lock_guard guard(lock_);
    const Known* const known = find(process);
    return known && known->origin == Origin::Family;
}

const Family::Known* Family::find(const ProcessRecord& process) const
{
    const auto found = known_.find(process.id);
    return found != known_.end() && found->second.started == process.started ? &found->second : nullptr;
}

/// Of a child of this process that no seen end has left behind: an end that nobody has seen may have done so.
Family::Origin Family::originOfChild(const ProcessRecord& process) const
{
    const bool may =
        std::any_of(known_.begin(), known_.end(),
                    [&](const auto& entry)
                    {
                        const Known& known = entry.second;
                        return known.origin != Origin::Stranger && !known.isEndSeen && known.started <= process.started;
                    });
    return may ? Origin::PerhapsFamily : Origin::Stranger;
}

/// A process that is seen for the first time.
Family::Known Family::meet(const ProcessRecord& process) const
{
    if (process.parent == thisProcess_)
    {
        // Whoever was started after that end was not left behind by it.
        if (lastEnd_.process != 0 && process.started <= lastEnd_.seen)
            return {process.started, lastEnd_.process, Origin::Family};
        return {process.started, thisProcess_, originOfChild(process)};
    }
    const auto parent = known_.find(process.parent);
    return {process.started, process.parent, parent == known_.end() ? Origin::Stranger : parent->second.origin};
}

void Family::setParents(std::vector<ProcessRecord>& running)
{
    const std::lock_guard guard(lock_);
    // Parents come before their children, whatever their ids are.
    std::vector<ProcessRecord*> byAge;
    byAge.reserve(running.size());
    for (ProcessRecord& record : running)
        byAge.push_back(&record);
    std::sort(byAge.begin(), byAge.end(),
              [](const ProcessRecord* one, const ProcessRecord* other)
              { return std::tie(one->started, one->id) < std::tie(other->started, other->id); });

    std::set<std::uint32_t> listed;
    for (ProcessRecord* const record : byAge)
    {
        if (!find(*record))
            known_[record->id] = meet(*record);
        record->parent = known_[record->id].parent;
        listed.insert(record->id);
    }
    // The ended ones of the family still tell whose children the others are.
    std::erase_if(known_, [&](const auto& entry)
                  { return entry.second.origin == Origin::Stranger && !listed.contains(entry.first); });
}

Family& family()
{
    // Never destroyed: threads that run on while the process ends may still use it.
    static Family& family = *new Family(static_cast<std::uint32_t>(getpid()));
    return family;
}

void takeInOrphans()
{
    prctl(PR_SET_CHILD_SUBREAPER, 1);
}

} // namespace Platform
