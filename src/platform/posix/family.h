#pragma once

#include "platform/posix/process_records.h"

#include <map>
#include <mutex>
#include <set>

namespace Platform
{

/// Who started whom, told as Windows tells it: the parent of a process stays the same for good, also when it ends.
///
/// Here a process whose parent ends gets another one, and this process takes in what its family leaves behind: those
/// that it started and all that came from them. Of such a process the first parent is no longer known when nobody has
/// looked at it before. It then counts as a child of the last of the family whose end was seen, so that whoever follows
/// that one finds it; before the first end was seen, as a child of this process. Any thread.
class Family
{
public:
    explicit Family(std::uint32_t thisProcess) : thisProcess_(thisProcess) {}

    /// This process has started another one.
    void onStarted(const ProcessRecord& process);
    /// An end was seen at the time `now` of `processTicks`. Processes outside of the family make no difference.
    void onEndSeen(std::uint32_t process, std::uint64_t now);
    /// Puts into each record who counts as its parent. The records are all that run.
    void setParents(std::vector<ProcessRecord>& running);
    /// Whether it surely is one of the family. A child of this process of unknown origin may have been started by
    /// other parts of the program, which look after it themselves.
    bool contains(const ProcessRecord& process);

private:
    enum class Origin
    {
        Stranger,
        PerhapsFamily,
        Family
    };

    struct Known
    {
        std::uint64_t started = 0;
        std::uint32_t parent = 0;
        Origin origin = Origin::Stranger;
        bool isEndSeen = false;
    };

    struct End
    {
        std::uint32_t process = 0;
        std::uint64_t seen = 0;
    };

    const Known* find(const ProcessRecord& process) const;
    Known meet(const ProcessRecord& process) const;
    Origin originOfChild(const ProcessRecord& process) const;

    const std::uint32_t thisProcess_;
    std::mutex lock_;
    std::map<std::uint32_t, Known> known_;
    End lastEnd_;
};

/// That of this process.
Family& family();
/// From now on this process takes in what its family leaves behind. Before it starts somebody.
void takeInOrphans();

} // namespace Platform
