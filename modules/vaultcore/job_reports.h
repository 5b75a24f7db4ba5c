#pragma once

#include "vaultcore/file_failure.h"
#include "vaultcore/operation_events.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace VaultCore
{

/// What a job tells its receivers, and whether one of their answers has stopped it.
class JobReports
{
public:
    explicit JobReports(const EventReceivers& events) : events_(events) {}

    bool stopped() const { return stopped_; }
    void stop() { stopped_ = true; }

    void operationStarted();
    void operationFinished();
    /// A file of this size was found. False when the job is stopped.
    bool listEntry(std::uint64_t size);
    void listBuilt(std::uint64_t totalSize);
    void fileStarted(const std::wstring& name);
    /// Tells the text of the failure; without one, where the result is: only a decryption tells that.
    void fileFinished(const std::wstring& name, const std::optional<FileFailure>& failure,
                      const std::wstring& result = {});
    /// The three: false when the job is stopped.
    bool fileProgress(std::uint64_t done, std::uint64_t total);
    bool destinyProgress(std::uint64_t done, std::uint64_t total);
    /// Asks what becomes of a failed file: true to try it again.
    bool repeats(const std::wstring& source, const std::wstring& target, const FileFailure& failure);

    /// Tries until it goes or the user gives up: the last failure then. A cancelled or skipped file is not asked
    /// about. `target` is read when a question is asked.
    std::optional<FileFailure> attempt(const std::wstring& source, const std::wstring& target,
                                       const std::function<void()>& work);

private:
    EventReceivers events_;
    std::uint32_t found_ = 0;
    bool stopped_ = false;
};

} // namespace VaultCore
