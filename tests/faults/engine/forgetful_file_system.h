#pragma once

#include "engine/disk_model.h"
#include "vaultcore/file_failure.h"
#include "vaultcore/file_system.h"

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace Faults
{

/// A file system in memory that knows what its disk would have kept at any moment. Names are ASCII, entries are paths
/// with '/' below one folder. Nobody else has a file open, and there are neither links nor further names.
class ForgetfulFileSystem final : public VaultCore::IFileSystem
{
public:
    /// All of it is on the disk.
    explicit ForgetfulFileSystem(const Files& files);

    /// Called behind each change, with the disk as it is then; the file system may not be used meanwhile.
    std::function<void(const DiskModel&)> onChange = [](const DiskModel&) {};
    /// What its user sees.
    Files files() const;

    VaultCore::Place locate(const std::wstring& entry) override;
    std::wstring display(const VaultCore::Place& place) override;
    std::wstring displayName(const VaultCore::NativeText& name) override;
    VaultCore::NativeText fold(const VaultCore::NativeText& name) override { return name; }
    VaultCore::FileInfo inspect(const VaultCore::Place& place) override;
    VaultCore::FileIdentity inspectParent(const VaultCore::Place& place) override;
    std::vector<VaultCore::NativeText> list(const VaultCore::Place& folder) override;
    std::unique_ptr<VaultCore::IWipeFile> openForWipe(const VaultCore::Place& place) override;
    void renameFolder(const VaultCore::Place& folder, const VaultCore::NativeText& name) override;
    void remove(const VaultCore::Place& place, VaultCore::FileKind kind) override;
    void removeUnchanged(const VaultCore::Place& place, const VaultCore::FileInfo& expected) override;
    VaultCore::Place locateFolder(const std::wstring& path) override;
    VaultCore::NativeText leafName(const std::wstring& text) override;
    std::unique_ptr<VaultCore::IReadFile> openForReading(const VaultCore::Place& place) override;
    std::unique_ptr<VaultCore::INewFile> createNew(const VaultCore::Place& place) override;
    void flush(const std::vector<VaultCore::INewFile*>& files) override;
    void createFolder(const VaultCore::Place& place) override;
    bool removeAbandoned(const VaultCore::Place& place) override;

private:
    class WipeFile;
    class ReadFile;
    class NewFile;

    struct File
    {
        DiskModel::Node node = 0;
        std::string content;
        std::uint64_t modified = 0;
    };
    using FilePtr = std::shared_ptr<File>;

    FilePtr find(const std::string& path) const;
    FilePtr require(const std::string& path) const;
    VaultCore::FileInfo infoOf(const File& file) const;
    void requireFolderOf(const std::string& path) const;
    void unlink(const std::string& path);
    void rename(const std::string& from, const std::string& to);
    void write(File& file, std::uint64_t offset, std::span<const std::uint8_t> bytes);
    void cut(File& file, std::uint64_t size);
    void flushContent(const File& file);
    void flushNames(const File& file);
    void addFolders(const std::string& path);
    void changed() { onChange(disk_); }

    mutable std::recursive_mutex mutex_;
    DiskModel disk_;
    std::map<std::string, FilePtr> files_;
    std::set<std::string> folders_;
    std::set<DiskModel::Node> inTheMaking_;
    DiskModel::Node nextNode_ = 1;
    std::uint64_t clock_ = 1;
};

} // namespace Faults
