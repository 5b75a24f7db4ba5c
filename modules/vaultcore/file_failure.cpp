#include "vaultcore/file_failure.h"

namespace VaultCore
{
namespace
{

/// Codes of the engine's own findings lie where no system has its codes.
constexpr std::uint32_t OwnCodes = 0x20000000;

} // namespace

std::wstring textOf(FailureCause cause, const std::wstring& detail)
{
    switch (cause)
    {
    case FailureCause::NoName:
        return L"The entry does not name a file or folder that can be removed.";
    case FailureCause::Missing:
        return L"The file does not exist.";
    case FailureCause::NoMatch:
        return L"No file matches the pattern.";
    case FailureCause::Denied:
        return L"Access is denied.";
    case FailureCause::ReadOnlyPlace:
        return L"The file is on a read-only place.";
    case FailureCause::InUse:
        return L"The file is in use by another program.";
    case FailureCause::NotEmpty:
        return L"The folder is not empty.";
    case FailureCause::LinkOnTheWay:
        return L"A link was found where a file or folder was expected; links are not followed.";
    case FailureCause::OtherNames:
        return L"The file has other names (hard links) outside the list; wiping it would destroy their content too.";
    case FailureCause::NotInPlace:
        return L"The file is kept by a storage service and cannot be overwritten in place.";
    case FailureCause::Full:
        return L"There is no space left on the disk.";
    case FailureCause::Device:
        return L"The device reported a read or write error.";
    case FailureCause::NameTooLong:
        return L"The name is too long for the system.";
    case FailureCause::NameTaken:
        return L"No free name was found for the file.";
    case FailureCause::Random:
        return L"Random data is not available.";
    case FailureCause::Cancelled:
        return L"The operation was cancelled; the file is untouched.";
    case FailureCause::CancelledPartly:
        return L"The operation was cancelled; the file is partly overwritten.";
    case FailureCause::IsLink:
        return L"This is a link and not a file with content of its own; links are not followed.";
    case FailureCause::TargetExists:
        return L"A file with the name of the result exists already; it is not replaced.";
    case FailureCause::SourceChanged:
        return L"The file was changed by another program during the work; it stays as it is.";
    case FailureCause::ResultDiffers:
        return L"The new file could not be read back as it was written; the source file is untouched.";
    case FailureCause::NoTargetFolder:
        return L"The folder for the decrypted files does not exist.";
    case FailureCause::NoKey:
        return L"The file needs a password or a key file, and none was given.";
    case FailureCause::ForeignKey:
        return L"The key does not belong to this engine.";
    case FailureCause::Skipped:
        return L"The file was skipped.";
    case FailureCause::NoMemory:
        return L"There is not enough memory.";
    case FailureCause::TooLarge:
        return L"The disk, or a limit of the system, allows no file as large as this one.";
    case FailureCause::FolderExchanged:
        return L"The way to the file leads to another folder than when the work began.";
    case FailureCause::Content:
    case FailureCause::Other:
        break;
    }
    return detail.empty() ? L"The system refused the operation." : detail;
}

FileFailure::FileFailure(FailureCause cause, std::uint32_t systemCode, const std::wstring& detail)
    : cause_(cause), code_(systemCode != 0 ? systemCode : OwnCodes + 1 + static_cast<std::uint32_t>(cause)),
      text_(textOf(cause, detail))
{
}

} // namespace VaultCore
