#pragma once

#include "interfaces/vaultcore/password_provider.h"
#include "vaultcore/container/container.h"
#include "vaultcore/file_failure.h"
#include "vaultcore/job_reports.h"

#include <memory>
#include <mutex>
#include <string>

namespace VaultCore
{

/// Finds the key of each encrypted file: first among the keys that fitted before, quietly, then by asking until one
/// fits or the user gives up.
class KeySearch
{
public:
    /// `provider` may be null: then there is nobody to ask.
    KeySearch(IPasswordProvider* provider, JobReports& reports) : provider_(provider), reports_(reports) {}

    /// Returns with the container unlocked; a new key that fitted belongs to the provider then. Throws `FileFailure`:
    /// `Skipped` when the user ignores the file, `Cancelled` with the job stopped when he cancels, `NoKey` without a
    /// provider, `ForeignKey`, and `Content` with the text of what the provider threw. Throws `ContainerFailure` for a
    /// container that the right key shows to be damaged; a new key belongs to the provider then, too.
    void unlock(ContainerReader& reader, const std::wstring& file);

    /// Among the keys that fitted before alone: false when none of them does; nobody is asked. Safe on several
    /// threads at once, as long as nothing else is called here or in the provider meanwhile. Throws as `unlock` for a
    /// damaged container.
    bool unlockWithStored(ContainerReader& reader);
    bool hasStored() const { return provider_ != nullptr && provider_->GetStoredKeyCount() > 0; }

private:
    bool fits(ContainerReader& reader, const Key& key);
    void keep(std::unique_ptr<Key> key);
    std::unique_ptr<Key> ask(const std::wstring& file);
    int provide(const std::wstring& file, IKey*& key);

    IPasswordProvider* provider_;
    JobReports& reports_;
    std::mutex mutex_;
    std::unique_ptr<DerivationCache> derivations_ = createDerivationCache();
};

} // namespace VaultCore
