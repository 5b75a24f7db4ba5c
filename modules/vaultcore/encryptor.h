#pragma once

#include "interfaces/vaultcore/encryptor.h"
#include "vaultcore/encryption_job.h"

#include <atomic>
#include <memory>
#include <thread>

namespace VaultCore
{

class EncryptionOptions final : public IEncryptionOptions
{
public:
    void Release() override { delete this; }
    void SetAlgorithm(std::uint32_t algorithm) override { order_.algorithm = algorithm; }
    /// Keeps a copy. Throws `VaultCore::Exception` for a key of another engine and for one that only decrypts.
    void SetKey(IKey* key) override;
    void SetRiddle(const wchar_t* riddle) override;
    void notCalled1() override {}
    void notCalled2() override {}
    void SetExtraText(const wchar_t* text) override;
    void SetDestiny(std::uint32_t destiny) override { order_.destiny = destiny; }
    const EncryptionOrder& order() const { return order_; }

private:
    EncryptionOrder order_;
};

/// Runs one `EncryptionJob` or `SfxJob` on a thread of its own. An exception out of a callback is not caught and ends
/// the process.
class Encryptor final : public IEncryptor
{
public:
    explicit Encryptor(std::unique_ptr<IFileSystem> files) : files_(std::move(files)) {}

    /// Waits for the end of the work. Not for use in a callback, which would wait for itself.
    void Release() override { delete this; }
    /// As `Start`, into one package.
    void StartSfx(IFileList* files, ISfxOptions* options, IOperationEvents* events) override;
    /// Once per encryptor. Throws `VaultCore::Exception` for a second start, for null or foreign options and events,
    /// and for options without a key.
    void Start(IFileList* files, IEncryptionOptions* options, IOperationEvents* events) override;
    bool IsFinished() override { return finished_.load(); }

private:
    ~Encryptor() = default;

    std::unique_ptr<IFileSystem> files_;
    std::atomic<bool> finished_{false};
    std::jthread thread_; // last: it ends before what it uses
};

} // namespace VaultCore
