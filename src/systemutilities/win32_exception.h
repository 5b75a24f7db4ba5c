#pragma once

#include <cstdint>
#include <string>
#include <system_error>

namespace Halden::SystemUtilities
{

/// A call of the system has failed. `what` starts with the message, and goes on with the system's own words for the
/// code. Any thread.
class Win32Exception : public std::system_error
{
public:
    ~Win32Exception() override;
    const char* what() const noexcept override;

    // Without a code it is the last error of the calling thread.
    explicit Win32Exception(const char* message);
    Win32Exception(const char* message, std::uint32_t error);
    explicit Win32Exception(const std::string& message);
    Win32Exception(const std::string& message, std::uint32_t error);

    /// The code of the system: an error, or the status where the message says so.
    std::uint32_t error() const { return error_; }

private:
    std::uint32_t error_;
};

} // namespace Halden::SystemUtilities
