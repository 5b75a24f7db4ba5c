#include "oracle/oracle.h"

#include "oracle/sealed.h"

#include <algorithm>
#include <set>

namespace Faults
{
namespace
{

constexpr std::size_t Piece = 32;

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
    return std::all_of(work.results.begin(), work.results.end(),
                       [&](const Result& result) { return stateOf(order.kind, result, files) == State::Whole; });
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

/// What a wipe has begun to overwrite, when the process was ended, is a file like any other for the next run.
bool isHalfWiped(const Order& order, const Files& between, const std::string& name, const std::string& content)
{
    return order.fate == Fate::Wipe && std::any_of(order.works.begin(), order.works.end(),
                                                   [&](const Work& work)
                                                   {
                                                       const std::string* const bytes = find(between, work.source);
                                                       return bytes != nullptr && nameOf(work.source) == name &&
                                                              *bytes == content;
                                                   });
}

/// A package may lack files that could not be packed, and holds nothing else.
bool isWholePackage(const Order& order, const Files& between, const std::string& path, const std::string& bytes)
{
    const auto inside = order.kind == Kind::Pack && isPackageName(path) ? unpacked(bytes) : std::nullopt;
    return inside && !inside->empty() &&
           std::all_of(inside->begin(), inside->end(),
                       [&](const auto& file) {
                           return isOrdered(order, file.first, file.second) ||
                                  isHalfWiped(order, between, file.first, file.second);
                       });
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

/// Is there a piece of `source` in its own place, or all of a short one?
bool shows(const std::string& content, const std::string& source)
{
    if (source.size() < Piece)
        return !source.empty() && content == source;
    for (std::size_t at = 0; at + Piece <= std::min(content.size(), source.size()); at += Piece)
    {
        if (content.compare(at, Piece, source, at, Piece) == 0)
            return true;
    }
    return false;
}

/// Without anything of what was in it. The power may have gone before the disk knew that it is empty.
bool isLeftByWipe(const Order& order, const std::string& path, const std::string& content)
{
    if (order.fate != Fate::Wipe || !isMeaningless(path.ends_with('/') ? path.substr(0, path.size() - 1) : path))
        return false;
    return std::none_of(order.works.begin(), order.works.end(),
                        [&](const Work& work) { return shows(content, order.before.at(work.source)); });
}

/// `between` is what the run found.
void judgeOthers(const Order& order, const Files& between, const Files& after, Complaints& found)
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
            !isWholePackage(order, between, path, content))
            found.push_back(path + " stands there, and nobody asked for it");
    }
}

/// A folder that is asked about is told of like a file.
std::size_t removedFolders(const Order& order, const Files& after)
{
    const auto isGone = [&](const std::string& entry)
    {
        const auto next = after.lower_bound(entry + '/');
        return !order.before.contains(entry) && (next == after.end() || !next->first.starts_with(entry + '/'));
    };
    if (order.kind != Kind::Remove)
        return 0;
    return static_cast<std::size_t>(std::count_if(order.entries.begin(), order.entries.end(), isGone));
}

/// It lacks what could not be packed, and is not replaced.
bool packageIsInTheWay(const Order& order, const Files& between)
{
    return order.kind == Kind::Pack &&
           std::any_of(between.begin(), between.end(), [](const auto& file) { return isPackageName(file.first); });
}

Complaints judged(const Order& order, const Files& between, const Files& after)
{
    Complaints found;
    for (const Work& work : order.works)
    {
        judgeSource(order, work, after, found);
        judgeResults(order, work, after, found);
    }
    judgeOthers(order, between, after, found);
    return found;
}

} // namespace

Complaints complaints(const Order& order, const Files& after, const std::optional<Told>& told)
{
    Complaints found = judged(order, order.before, after);
    const std::size_t done = doneOf(order, after) + removedFolders(order, after);
    if (told && told->processed > done)
        found.push_back(std::to_string(told->processed) + " files were told as done, and only " + std::to_string(done) +
                        " are");
    return found;
}

Complaints complaintsAtEnd(const Order& order, const Files& between, const Files& after)
{
    Complaints found = judged(order, between, after);
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
        if (wasThere && !allWhole(order, work, after) && !packageIsInTheWay(order, between))
            found.push_back(work.source + " has no whole result though nothing disturbed the job");
    }
    return found;
}

std::size_t doneOf(const Order& order, const Files& after)
{
    const State wanted = order.fate == Fate::Keep ? State::Whole : State::Missing;
    return static_cast<std::size_t>(std::count_if(
        order.works.begin(), order.works.end(),
        [&](const Work& work) { return allWhole(order, work, after) && stateOfSource(order, work, after) == wanted; }));
}

std::size_t withResults(const Order& order, const Files& after)
{
    return static_cast<std::size_t>(std::count_if(order.works.begin(), order.works.end(),
                                                  [&](const Work& work) { return allWhole(order, work, after); }));
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
