#pragma once

#include "systemutilities/win32_exception.h"

#include <gtest/gtest.h>

#include <string>

namespace Halden::SystemUtilities::Registry
{

/// The error of what has to fail; the text of its exception has to start with the message.
template <class Operation> std::uint32_t errorOf(const std::string& message, Operation operation)
{
    try
    {
        operation();
    }
    catch (const Win32Exception& exception)
    {
        const std::error_code code(static_cast<int>(exception.error()), std::system_category());
        EXPECT_EQ(exception.what(), message + ": " + code.message());
        EXPECT_EQ(exception.code(), code);
        return exception.error();
    }
    ADD_FAILURE() << "nothing was thrown";
    return 0;
}

} // namespace Halden::SystemUtilities::Registry
