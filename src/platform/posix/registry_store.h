#pragma once

#include "platform/posix/descriptor.h"
#include "platform/registry_on_tree.h"

#include <sys/stat.h>

#include <chrono>
#include <memory>
#include <mutex>
#include <string>

namespace Platform
{

/// The registry of a user, kept in the file "registry" of a folder: private, and replaced as a whole by each change, so
/// that whoever reads sees all of a change or nothing. Safe on any thread and with any number of processes, which take
/// turns to write by means of "registry.lock" beside it.
///
/// No file is an empty tree, and reading makes none. Beside the results of the tree itself: `ErrorAccessDenied` when
/// there is no right to read or write, or when what is there is no plain file of the user's own;
/// `ErrorRegistryCorrupt` for a file that is damaged, which is left as it is; `ErrorLockViolation` when others write
/// for too long; `ErrorDiskFull`.
class RegistryStore : public RegistryStorage
{
public:
    /// Gives the folder, which need not be there yet; empty when there is none for this user. Asked each time.
    using FolderOf = std::string (*)();

    explicit RegistryStore(FolderOf folderOf, std::chrono::milliseconds patience = std::chrono::seconds(5))
        : folderOf_(folderOf), patience_(patience)
    {
    }

    std::uint32_t read(const Reading& reading) override;
    std::uint32_t change(const Change& change) override;

private:
    using Tree = std::shared_ptr<const RegistryTree>;

    std::uint32_t load(const std::string& path, Tree& tree);
    std::uint32_t replace(int folder, const std::string& path, Tree tree);
    void remember(const std::string& path, Descriptor file, Tree tree);

    const FolderOf folderOf_;
    const std::chrono::milliseconds patience_;

    /// What was last read or written. The file is kept open, so that no other file can look the same.
    struct Known
    {
        std::string path;
        Descriptor file;
        struct stat status = {};
        Tree tree;
    };
    std::mutex lock_;
    Known known_;
};

/// Where the settings of the user are, with no regard to what is there. Empty when there is no place for them.
std::string userSettingsFolder();

} // namespace Platform
