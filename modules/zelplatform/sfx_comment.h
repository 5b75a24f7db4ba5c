#pragma once

#include <string>

namespace ZelPlatform
{

/// Where the texts of the suite send their reader.
inline constexpr const wchar_t* VendorDomain = L"www.halden.example";

/// The user's default comment for self-extracting files, kept in one UTF-8 file of the user's own. Copies share the
/// file. Any thread, any number of processes: a reader sees one whole comment, the last writer wins.
class SfxComment
{
public:
    /// An empty path keeps nothing.
    explicit SfxComment(std::wstring file);
    /// The saved comment, or the built-in one when there is none or it cannot be read.
    std::wstring load() const;
    /// A failure stays silent and leaves the comment that was saved before.
    void save(const wchar_t* comment) const;

private:
    std::wstring file_;
};

/// The comment of a user who never saved one.
std::wstring builtInSfxComment();

} // namespace ZelPlatform
