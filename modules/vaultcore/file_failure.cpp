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
