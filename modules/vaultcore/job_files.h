#pragma once

#include "vaultcore/file_failure.h"
#include "vaultcore/file_system.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace VaultCore
{

/// One step of a job.
struct JobItem
{
    enum class Kind
    {
        /// A name to work on.
        File,
        /// A folder, behind all that it holds.
        Folder,
        /// An entry that could not be listed.
        BadEntry,
        /// A name inside an entry that could not be looked at or, for a folder, not be listed.
        BadName,
    };

    Kind kind = Kind::File;
    /// Changes when a wipe renames the file.
    Place place;
    /// The path as the user knows it; for a bad entry its text.
    std::wstring name;
    FileInfo info;
};

/// What a job wants of a list.
struct Selection
{
    using Wanted = std::function<bool(const NativeText& name)>;

    /// Links count as files: their names are worked on. Without, they are left out, and an entry that is one is
    /// refused (`IsLink`).
    bool links = true;
    /// Asked for every file found in a folder, or by a pattern; empty wants them all. An entry that names a file is
    /// always taken.
    Wanted inFolder;
    Wanted byPattern;
};

/// Turns the entries of a list into the names to work on: files first, then the folders, inner ones before outer ones.
/// - A folder is listed with all that is in it. A link in it stands for itself and is not followed; nor is a folder
///   on another volume than the entry's.
/// - An entry that exists stands for itself, even with `*` or `?` in its name. Any other one with those in its last
///   segment is a pattern: the files and links of its folder that match, but no folders.
/// - A name that several entries reach comes once. Several names of one file (hard links) each come once.
class JobFiles
{
public:
    /// Asked for every file that is found; false ends the listing.
    using Found = std::function<bool(const JobItem&)>;

    JobFiles(IFileSystem& files, Selection selection, Found found)
        : files_(files), selection_(std::move(selection)), found_(std::move(found))
    {
    }

    /// What an entry holds. What cannot be read comes as a bad entry or name.
    std::vector<JobItem> expandEntry(const std::wstring& entry);
    /// The same again for a bad item. Throws `FileFailure` when the entry or name itself fails again.
    std::vector<JobItem> expandAgain(const JobItem& bad);

    bool stopped() const { return stopped_; }
    /// Sizes of all names found. A file with several names counts with each, as each is reported when it is removed.
    std::uint64_t totalSize() const { return totalSize_; }
    /// How many names of the file are still in the job.
    std::uint64_t namesOf(const FileIdentity& identity) const;
    /// One name of the file, or the folder, is done with. Of a file that is `gone` the system may give the identity to
    /// the next one that is made; one that stays is not to be found a second time.
    void forgetName(const FileIdentity& identity, bool gone = true);
    /// A file that the job made itself: it is not to be found any more.
    void addKnown(const FileIdentity& identity) { known_.insert({identity, {}, {}}); }

private:
    std::vector<JobItem> readEntry(const std::wstring& entry);
    void addEntryFolder(const Place& folder, const FileInfo& info, std::vector<JobItem>& items);
    void addTree(const Place& folder, const FileInfo& info, std::vector<JobItem>& items);
    void addChild(const Place& place, std::vector<JobItem>& items, std::vector<JobItem>& pending);
    void addMatches(const Place& pattern, std::vector<JobItem>& items);
    void addFile(const Place& place, const FileInfo& info, std::vector<JobItem>& items);
    void addBadName(const Place& place, std::vector<JobItem>& items);
    bool isWanted(const Selection::Wanted& wanted, const Place& place, const FileInfo& info) const;
    bool isNew(const Place& place, const FileInfo& info);
    std::optional<FileInfo> inspectIfThere(const Place& place);

    using NameKey = std::tuple<FileIdentity, FileIdentity, NativeText>;

    IFileSystem& files_;
    Selection selection_;
    Found found_;
    std::set<NameKey> known_;
    std::map<FileIdentity, std::uint64_t> names_;
    std::uint64_t totalSize_ = 0;
    bool stopped_ = false;
};

} // namespace VaultCore
