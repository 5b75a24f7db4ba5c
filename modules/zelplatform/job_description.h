#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace ZelPlatform
{

enum class JobKind
{
    Unknown, ///< a kind that this version does not know
    Encrypt,
    EncryptSfx,
    Decrypt,
    DoubleClick,
    Delete,
};

/// What one job file says. The initial values are those of fields that the file leaves out.
struct JobDescription
{
    JobKind kind = JobKind::Unknown;
    std::vector<std::wstring> files;
    std::uint32_t algorithm = 3;
    std::uint32_t destiny = 0;
    std::wstring extraText;
    std::optional<std::wstring> comment; ///< none: the user's default
    std::optional<std::wstring> path;
    std::uint32_t mode = 0;
    std::uint32_t method = 0;
};

} // namespace ZelPlatform
