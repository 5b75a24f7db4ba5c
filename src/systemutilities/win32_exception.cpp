#include "systemutilities/win32_exception.h"

#include "platform/handles.h"
#include "platform/platform.h"

namespace Halden::SystemUtilities
{

namespace
{

std::uint32_t lastError()
{
    return Platform::platform().handles.lastError();
}

} // namespace

Win32Exception::~Win32Exception() = default;

const char* Win32Exception::what() const noexcept
{
    return std::system_error::what();
}

Win32Exception::Win32Exception(const char* message) : Win32Exception(message, lastError()) {}

Win32Exception::Win32Exception(const char* message, std::uint32_t error)
    : std::system_error(static_cast<int>(error), std::system_category(), message), error_(error)
{
}

Win32Exception::Win32Exception(const std::string& message) : Win32Exception(message, lastError()) {}

Win32Exception::Win32Exception(const std::string& message, std::uint32_t error)
    : std::system_error(static_cast<int>(error), std::system_category(), message), error_(error)
{
}

} // namespace Halden::SystemUtilities
