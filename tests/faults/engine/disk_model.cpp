#include "engine/disk_model.h"

#include <algorithm>

namespace Faults
{

void DiskModel::keep(const std::string& path, Node node, const std::string& content)
{
    names_[path] = node;
    contents_[node].kept = std::make_shared<std::string>(content);
}

void DiskModel::addName(const std::string& path, Node node)
{
    pendingNames_.push_back({"", path, node});
}

void DiskModel::removeName(const std::string& path, Node node)
{
    pendingNames_.push_back({path, "", node});
}

void DiskModel::changeName(const std::string& from, const std::string& to, Node node)
{
    pendingNames_.push_back({from, to, node});
}

void DiskModel::write(Node node, std::uint64_t offset, std::string bytes)
{
    contents_[node].pending.push_back(std::make_shared<Write>(Write{offset, std::move(bytes), false}));
}

void DiskModel::cut(Node node, std::uint64_t size)
{
    contents_[node].pending.push_back(std::make_shared<Write>(Write{size, {}, true}));
}

void DiskModel::flushContent(Node node, const std::string& content)
{
    contents_[node] = {std::make_shared<std::string>(content), {}};
}

void DiskModel::flushNames(Node node)
{
    for (const NameChange& change : pendingNames_)
    {
        if (change.node == node)
            apply(change, names_);
    }
    std::erase_if(pendingNames_, [&](const NameChange& change) { return change.node == node; });
}

Files DiskModel::survivors(const Arrives& arrives) const
{
    Names names = names_;
    for (const NameChange& change : pendingNames_)
    {
        if (arrives())
            apply(change, names);
    }
    Files files;
    for (const auto& [path, node] : names)
    {
        const auto content = contents_.find(node);
        files[path] = content == contents_.end() ? std::string() : surviving(content->second, arrives);
    }
    return files;
}

/// A change whose beginning got lost has nothing to change.
void DiskModel::apply(const NameChange& change, Names& names)
{
    if (change.from.empty())
    {
        names.emplace(change.to, change.node);
        return;
    }
    const auto found = names.find(change.from);
    if (found == names.end() || found->second != change.node)
        return;
    names.erase(found);
    if (!change.to.empty())
        names.emplace(change.to, change.node);
}

std::string DiskModel::surviving(const Content& content, const Arrives& arrives)
{
    std::string bytes = *content.kept;
    for (const auto& write : content.pending)
        apply(*write, arrives, bytes);
    return bytes;
}

void DiskModel::apply(const Write& write, const Arrives& arrives, std::string& content)
{
    if (write.cuts && arrives())
        content.resize(std::min<std::size_t>(content.size(), static_cast<std::size_t>(write.offset)));
    for (std::size_t at = 0; at < write.bytes.size(); at += Block)
    {
        if (!arrives())
            continue;
        const std::size_t size = std::min(Block, write.bytes.size() - at);
        const std::size_t place = static_cast<std::size_t>(write.offset) + at;
        content.resize(std::max(content.size(), place + size));
        content.replace(place, size, write.bytes, at, size);
    }
}

} // namespace Faults
