#pragma once

#include "vaultcore/file_failure.h"
#include "vaultcore/file_system.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace Faults
{

/// What fails, and for how long.
struct Fault
{
    /// Which operation, from 1 on; 0 for none.
    long step = 0;
    bool fromThereOn = false;
    /// Nothing stands for memory that the language cannot have, `std::bad_alloc`.
    std::optional<VaultCore::FailureCause> cause = VaultCore::FailureCause::Other;
};

/// Another file system whose Nth operation fails before it does anything. Operations are counted over all threads.
class FaultyFileSystem final : public VaultCore::IFileSystem
{
public:
    /// `real` is not owned.
    FaultyFileSystem(VaultCore::IFileSystem& real, const Fault& fault) : real_(real), fault_(fault) {}

    /// Names of the operations so far.
    std::vector<std::string> operations() const;

    VaultCore::Place locate(const std::wstring& entry) override { return real_.locate(entry); }
    std::wstring display(const VaultCore::Place& place) override { return real_.display(place); }
    std::wstring displayName(const VaultCore::NativeText& name) override { return real_.displayName(name); }
    VaultCore::NativeText fold(const VaultCore::NativeText& name) override { return real_.fold(name); }
    VaultCore::Place locateFolder(const std::wstring& path) override { return real_.locateFolder(path); }
    VaultCore::NativeText leafName(const std::wstring& text) override { return real_.leafName(text); }

    VaultCore::FileInfo inspect(const VaultCore::Place& place) override;
    VaultCore::FileIdentity inspectParent(const VaultCore::Place& place) override;
    std::vector<VaultCore::NativeText> list(const VaultCore::Place& folder) override;
    std::unique_ptr<VaultCore::IWipeFile> openForWipe(const VaultCore::Place& place) override;
    void renameFolder(const VaultCore::Place& folder, const VaultCore::NativeText& name) override;
    void remove(const VaultCore::Place& place, VaultCore::FileKind kind) override;
    void removeUnchanged(const VaultCore::Place& place, const VaultCore::FileInfo& expected) override;
    std::unique_ptr<VaultCore::IReadFile> openForReading(const VaultCore::Place& place) override;
    std::unique_ptr<VaultCore::INewFile> createNew(const VaultCore::Place& place) override;
    void flush(const std::vector<VaultCore::INewFile*>& files) override;
    void createFolder(const VaultCore::Place& place) override;
    bool removeAbandoned(const VaultCore::Place& place) override;

private:
    class WipeFile;
    class ReadFile;
    class NewFile;

    /// Throws where it is its turn.
    void step(const char* operation);

    VaultCore::IFileSystem& real_;
    const Fault fault_;
    mutable std::mutex mutex_;
    std::vector<std::string> operations_;
};

} // namespace Faults
