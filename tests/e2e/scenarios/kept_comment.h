#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace EndToEnd
{

/// Where the suite keeps the user's settings.
std::filesystem::path settingsFolder();

/// Takes the user's default comment of self-extracting packages away for the time of a test and puts it back at the
/// end, so that a test on somebody's own machine spoils nothing.
class KeptComment
{
public:
    KeptComment();
    ~KeptComment();
    KeptComment(const KeptComment&) = delete;
    KeptComment& operator=(const KeptComment&) = delete;

    /// What has been saved since, in UTF-8; nothing when nothing was.
    std::optional<std::string> saved() const;

private:
    const std::filesystem::path file_;
    std::optional<std::string> former_;
};

} // namespace EndToEnd
