#pragma once

#include "oracle/files.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace Faults
{

/// What a disk holds at one moment: what it is known to have, and the changes since that were only handed to the
/// system. When the power goes, each of these may have arrived or not, whatever their order was.
class DiskModel
{
public:
    using Node = std::uint64_t;
    /// Asked for each change that may have arrived, and for each block of a large one.
    using Arrives = std::function<bool()>;

    static constexpr std::size_t Block = 4096;

    /// A file that is on the disk, name and content.
    void keep(const std::string& path, Node node, const std::string& content);

    // Changes that may get lost.
    void addName(const std::string& path, Node node);
    void removeName(const std::string& path, Node node);
    /// Arrives as a whole or not at all.
    void changeName(const std::string& from, const std::string& to, Node node);
    void write(Node node, std::uint64_t offset, std::string bytes);
    void cut(Node node, std::uint64_t size);

    // And what makes sure that they do not.
    void flushContent(Node node, const std::string& content);
    void flushNames(Node node);

    /// What is found when the power is back.
    Files survivors(const Arrives& arrives) const;

private:
    struct Write
    {
        std::uint64_t offset = 0;
        std::string bytes;
        bool cuts = false;
    };

    struct Content
    {
        std::shared_ptr<const std::string> kept = std::make_shared<std::string>();
        std::vector<std::shared_ptr<const Write>> pending;
    };

    struct NameChange
    {
        std::string from; ///< empty for a new name
        std::string to;   ///< empty for one that goes
        Node node = 0;
    };

    using Names = std::map<std::string, Node>;

    static void apply(const NameChange& change, Names& names);
    static std::string surviving(const Content& content, const Arrives& arrives);
    static void apply(const Write& write, const Arrives& arrives, std::string& content);

    Names names_;
    std::vector<NameChange> pendingNames_;
    std::map<Node, Content> contents_;
};

} // namespace Faults
