#pragma once

#include <cstdint>
#include <experimental/filesystem>
#include <string>

namespace Halden::SystemUtilities
{

/// A failed operation on one path or two. The code belongs to the system's category; without one it is the last error
/// of the calling thread (`Handles::lastError`). On Linux that is a number of Windows too, and the words that the
/// category has for it may be those of another failure. What is no valid text in a path shows as U+FFFD on Windows.
/// Copied and read by any thread.
class FileSystemException : public std::experimental::filesystem::filesystem_error
{
public:
    FileSystemException(const std::string& message, const std::wstring& path);
    FileSystemException(const std::string& message, const std::wstring& first, const std::wstring& second);
    FileSystemException(const std::string& message, const std::wstring& path, std::uint32_t code);
    FileSystemException(const std::string& message, const std::wstring& first, const std::wstring& second,
                        std::uint32_t code);
    ~FileSystemException() override;

    /// The text of `GetWideMessage`, in the code page of the thread that made the exception.
    const char* what() const noexcept override;
    /// The message with the code's own words, then each path behind a blank; a path that is missing or empty leaves its
    /// blank.
    virtual std::wstring GetWideMessage() const;

private:
    std::string text_;
};

} // namespace Halden::SystemUtilities
