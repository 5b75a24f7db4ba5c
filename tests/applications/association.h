#pragma once

#include <string>

namespace Applications
{

/// Makes the test application, beside the running test program, the one that the user's system opens documents of an
/// extension with. What was set before is not kept; nothing is set any more when the object ends.
class Association
{
public:
    /// `extension` with its dot. The application gets `arguments`, as they would stand on a command line, and the path
    /// of the document behind them. Throws std::runtime_error when it cannot be set.
    Association(std::wstring extension, const std::wstring& arguments);
    /// No application at all opens them.
    explicit Association(std::wstring extension);
    ~Association();
    Association(const Association&) = delete;
    Association& operator=(const Association&) = delete;

private:
    std::wstring extension_;
};

/// The full path of the test application, beside the running test program.
std::wstring testApplication();

} // namespace Applications
