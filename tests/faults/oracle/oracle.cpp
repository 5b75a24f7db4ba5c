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

bool gives(Kind kind, const Result& result, const std::string& bytes)
{
    if (kind == Kind::Encrypt)
        return opened(bytes) == result.content;
    if (kind == Kind::Decrypt)
        return bytes == result.content;
    const auto files = unpacked(bytes);
    return files && files->contains(result.packedName) && files->at(result.packedName) == result.content;
}

State stateOf(Kind kind, const Result& result, const Files& files)
{
    const std::string* const bytes = find(files, result.path);
    if (bytes == nullptr)
        return State::Missing;
    return gives(kind, result, *bytes) ? State::Whole : State::Broken;
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

/// The result of a package may lack a file that could not be packed.
bool mayLack(const Order& order, const Work& work, const Files& after)
{
    return order.kind == Kind::Pack && stateOfSource(order, work, after) == State::Whole &&
           unpacked(*find(after, work.results[0].path)).has_value();
}

void judgeResults(const Order& order, const Work& work, const Files& after, Complaints& found)
{
    for (const Result& result : work.results)
    {
        if (stateOf(order.kind, result, after) == State::Broken && !mayLack(order, work, after))
            found.push_back(result.path + " stands and is not whole");
    }
}

std::set<std::string> namesOf(const Order& order)
{
    std::set<std::string> names;
    for (const Work& work : order.works)
    {
        names.insert(work.source);
        for (const Result& result : work.results)
            names.insert(result.path);
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

/// An earlier run has left an empty file of a wipe in a folder of the job: it is a file like any other now.
bool comesFromWipe(const Order& order, const std::string& path, const std::string& content)
{
    const std::string ending = ".zel";
    return order.kind == Kind::Encrypt && path.ends_with(ending) && opened(content) == std::string() &&
           isLeftByWipe(order, path.substr(0, path.size() - ending.size()), "");
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
        if (!known && !isTemporary(path) && !isLeftByWipe(order, path, content) && !comesFromWipe(order, path, content))
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
