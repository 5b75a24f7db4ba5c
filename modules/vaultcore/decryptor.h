#pragma once

#include "interfaces/vaultcore/decryptor.h"
#include "vaultcore/decryption_job.h"

#include <atomic>
#include <memory>
#include <string>
#include <thread>

namespace VaultCore
{

class DecryptionOptions final : public IDecryptionOptions
{
public:
    void Release() override { delete this; }
    void SetPath(const wchar_t* path) override { path_ = path != nullptr ? path : L""; }
    void SetMode(std::uint32_t mode) override { mode_ = mode; }
    int GetMode() override { return static_cast<int>(mode_); }
    const std::wstring& path() const { return path_; }

private:
    std::wstring path_;
    std::uint32_t mode_ = 0;
};

/// Runs one `DecryptionJob` on a thread of its own. An exception out of a callback other than the password provider's
/// is not caught and ends the process.
class Decryptor final : public IDecryptor
{
public:
    explicit Decryptor(std::unique_ptr<IFileSystem> files) : files_(std::move(files)) {}

    /// Waits for the end of the work. Not for use in a callback, which would wait for itself.
    void Release() override { delete this; }
    /// Once per decryptor. Throws `VaultCore::Exception` for a second start and for null or foreign options and events.
    void Start(IFileList* files, IDecryptionOptions* options, IDecryptionEvents* events) override;
    bool IsFinished() override { return finished_.load(); }

private:
    ~Decryptor() = default;

    std::unique_ptr<IFileSystem> files_;
    std::atomic<bool> finished_{false};
    std::jthread thread_; // last: it ends before what it uses
};

} // namespace VaultCore
