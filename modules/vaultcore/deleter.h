#pragma once

#include "interfaces/vaultcore/deleter.h"
#include "vaultcore/file_system.h"

#include <atomic>
#include <memory>
#include <thread>

namespace VaultCore
{

class DeletionOptions final : public IDeletionOptions
{
public:
    void Release() override { delete this; }
    void SetMethod(std::uint32_t method) override { method_ = method; }
    std::uint32_t method() const { return method_; }

private:
    std::uint32_t method_ = 0;
};

/// Runs one `DeletionJob` on a thread of its own. An exception out of a callback is not caught and ends the process.
class Deleter final : public IDeleter
{
public:
    explicit Deleter(std::unique_ptr<IFileSystem> files) : files_(std::move(files)) {}

    /// Waits for the end of the work. Not for use in a callback, which would wait for itself.
    void Release() override { delete this; }
    /// Once per deleter. Throws `VaultCore::Exception` for a second start and for null or foreign options and events.
    void Start(IFileList* files, IDeletionOptions* options, IOperationEvents* events) override;
    bool IsFinished() override { return finished_.load(); }

private:
    ~Deleter() = default;

    std::unique_ptr<IFileSystem> files_;
    std::atomic<bool> finished_{false};
    std::jthread thread_; // last: it ends before what it uses
};

} // namespace VaultCore
