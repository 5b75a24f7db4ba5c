#include "oracle/oracle.h"

#include "oracle/sealed.h"

#include <algorithm>
#include <set>

namespace Faults
{
namespace
{

enum class State
{
    Missing,
    Whole,
    Broken,
};

const std::string* find(const Files& files, const std::string& path)
{
    const auto found = files.find(path);
    return found == files.end() ? nullptr : &found->second;
}

bool isPackageName(const std::string& path)
{
    return path.ends_with(".exe");
}

/// A run that goes on where another one was ended packs what it still finds, and names the package after that.
State stateInPackages(const Result& result, const Files& files)
{
    for (const auto& [path, bytes] : files)
    {
        const auto inside = isPackageName(path) ? unpacked(bytes) : std::nullopt;
        const std::string* const content = inside ? find(*inside, result.packedName) : nullptr;
        if (content != nullptr && *content == result.content)
            return State::Whole;
    }
    return State::Missing;
}

State stateOf(Kind kind, const Result& result, const Files& files)
{
    if (kind == Kind::Pack)
        return stateInPackages(result, files);
    const std::string* const bytes = find(files, result.path);
    if (bytes == nullptr)
        return State::Missing;
    const bool whole = kind == Kind::Encrypt ? opened(*bytes) == result.content : *bytes == result.content;
    return whole ? State::Whole : State::Broken;
}

State stateOfSource(const Order& order, const Work& work, const Files& files)
{
    const std::string* const bytes = find(files, work.source);
    if (bytes == nullptr)
        return State::Missing;
    return *bytes == order.before.at(work.source) ? State::Whole : State::Broken;
}

bool allWhole(const Order& order, const Work& work, const Files& files)
{
    return std::all_of(work.results.begin(), work.results.end(), [&](const Result& result)
                       { return stateOf(order.kind, result, files) == State::Whole; });
}

/// Without results nothing has to stand before the file goes.
void judgeSource(const Order& order, const Work& work, const Files& after, Complaints& found)
{
    const State state = stateOfSource(order, work, after);
    if (state == State::Whole)
        return;
    const std::string what = work.source + (state == State::Missing ? " is gone" : " is changed");
    if (order.fate == Fate::Keep)
        found.push_back(what + ", which nobody asked for");
    else if (state == State::Broken && order.fate != Fate::Wipe)
        found.push_back(what + ", where it should go as it is or stay");
    else if (!allWhole(order, work, after))
        found.push_back(what + ", and no whole result stands in its place");
}

void judgeResults(const Order& order, const Work& work, const Files& after, Complaints& found)
{
    for (const Result& result : work.results)
    {
        if (stateOf(order.kind, result, after) == State::Broken)
            found.push_back(result.path + " stands and is not whole");
    }
}

bool isOrdered(const Order& order, const std::string& name, const std::string& content)
{
    return std::any_of(order.works.begin(), order.works.end(),
                       [&](const Work& work)
                       {
                           const Result& result = work.results.front();
                           return result.packedName == name && result.content == content;
                       });
}

/// A package may lack files that could not be packed, and holds nothing else.
bool isWholePackage(const Order& order, const std::string& path, const std::string& bytes)
{
    const auto inside = order.kind == Kind::Pack && isPackageName(path) ? unpacked(bytes) : std::nullopt;
    return inside && !inside->empty() &&
           std::all_of(inside->begin(), inside->end(),
                       [&](const auto& file) { return isOrdered(order, file.first, file.second); });
}

std::set<std::string> namesOf(const Order& order)
{
    std::set<std::string> names;
    for (const Work& work : order.works)
    {
        names.insert(work.source);
        for (const Result& result : work.results)
        {
            if (order.kind != Kind::Pack)
                names.insert(result.path);
        }
    }
    return names;
}

/// A folder that has become empty, or is there for results to come.
bool isFolderOfJob(const std::set<std::string>& names, const std::string& path)
{
    const auto next = names.lower_bound(path);
    return path.ends_with('/') && next != names.end() && next->starts_with(path);
}

bool isLeftByWipe(const Order& order, const std::string& path, const std::string& content)
{
    if (order.fate != Fate::Wipe || !content.empty())
        return false;
    return isMeaningless(path.ends_with('/') ? path.substr(0, path.size() - 1) : path);
}

void judgeOthers(const Order& order, const Files& after, Complaints& found)
{
    const std::set<std::string> names = namesOf(order);
    for (const auto& [path, content] : order.before)
    {
        const std::string* const now = find(after, path);
        if (!names.contains(path) && (now == nullptr || *now != content))
            found.push_back(path + " is not what it was, and the job is not about it");
    }
    for (const auto& [path, content] : after)
    {
        const bool known = names.contains(path) || order.before.contains(path) || isFolderOfJob(names, path);
        if (!known && !isTemporary(path) && !isLeftByWipe(order, path, content) &&
            !isWholePackage(order, path, content))
            found.push_back(path + " stands there, and nobody asked for it");
    }
}

} // namespace

Complaints complaints(const Order& order, const Files& after, const std::optional<Told>& told)
{
    Complaints found;
    for (const Work& work : order.works)
    {
        judgeSource(order, work, after, found);
        judgeResults(order, work, after, found);
    }
    judgeOthers(order, after, found);
    const std::size_t done = doneOf(order, after);
    if (told && told->processed > done)
        found.push_back(std::to_string(told->processed) + " files were told as done, and only " + std::to_string(done) +
                        " are");
    return found;
}

Complaints complaintsAtEnd(const Order& order, const Files& between, const Files& after)
{
    Complaints found = complaints(order, after);
    for (const auto& [path, content] : after)
    {
        if (isTemporary(path))
            found.push_back(path + " is still there");
    }
    for (const Work& work : order.works)
    {
        const bool wasThere = find(between, work.source) != nullptr;
        if (order.kind == Kind::Remove && find(after, work.source) != nullptr)
            found.push_back(work.source + " is still there");
        if (wasThere && !allWhole(order, work, after))
            found.push_back(work.source + " has no whole result though nothing disturbed the job");
    }
    return found;
}

std::size_t doneOf(const Order& order, const Files& after)
{
    const State wanted = order.fate == Fate::Keep ? State::Whole : State::Missing;
    return static_cast<std::size_t>(
        std::count_if(order.works.begin(), order.works.end(), [&](const Work& work)
                      { return allWhole(order, work, after) && stateOfSource(order, work, after) == wanted; }));
}

bool hasTemporaries(const Files& files)
{
    return std::any_of(files.begin(), files.end(), [](const auto& file) { return isTemporary(file.first); });
}

std::string textOf(const Complaints& complaints)
{
    std::string text;
    for (const std::string& complaint : complaints)
        text += complaint + '\n';
    return text;
}

} // namespace Faults
