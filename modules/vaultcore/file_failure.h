#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace VaultCore
{

/// Why the work on a file cannot go on, in the terms of this engine.
enum class FailureCause
{
    NoName,
    Missing,
    NoMatch,
    Denied,
    ReadOnlyPlace,
    InUse,
    NotEmpty,
    LinkOnTheWay,
    OtherNames,
    NotInPlace,
    Full,
    Device,
    NameTooLong,
    NameTaken,
    Random,
    Cancelled,
    CancelledPartly,
    IsLink,
    TargetExists,
    SourceChanged,
    ResultDiffers,
    NoTargetFolder,
    NoKey,
    ForeignKey,
    Skipped,
    NoMemory,
    TooLarge,
    FolderExchanged,
    /// The content of a file or a key; `detail` tells.
    Content,
    Other,
};

/// Plain sentence for the user. `detail` is the system's own text and serves `Other`, or that of `Content`.
std::wstring textOf(FailureCause cause, const std::wstring& detail);

/// A failed operation on one file; it never leaves the engine.
class FileFailure
{
public:
    /// `systemCode` is the system's error number, or 0 for a failure that the engine itself found.
    FileFailure(FailureCause cause, std::uint32_t systemCode, const std::wstring& detail = {});

    FailureCause cause() const { return cause_; }
    /// Never 0, which would mean success.
    std::uint32_t code() const { return code_; }
    const std::wstring& text() const { return text_; }

private:
    FailureCause cause_;
    std::uint32_t code_;
    std::wstring text_;
};

} // namespace VaultCore
