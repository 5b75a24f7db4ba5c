#include "systemutilities/win32_exception.h"

#include "fakes/fake_platform.h"

#include <gtest/gtest.h>

#include <type_traits>

using Halden::SystemUtilities::Win32Exception;

namespace
{

struct AWin32Exception : testing::Test
{
    static void expect(const Win32Exception& exception, std::uint32_t error)
    {
        EXPECT_EQ(exception.error(), error);
        EXPECT_EQ(exception.code(), std::error_code(static_cast<int>(error), std::system_category()));
        EXPECT_EQ(std::string(exception.what()),
                  "Something failed.: " + std::system_category().message(static_cast<int>(error)));
    }

    Fakes::FakePlatform platform;
};

TEST_F(AWin32Exception, takesTheLastErrorWhenNoneIsGiven)
{
    platform.handles.setLastError(126);
    const Win32Exception fromLiteral("Something failed.");
    platform.handles.setLastError(5);
    const Win32Exception fromString(std::string("Something failed."));
    platform.handles.setLastError(0);
    expect(fromLiteral, 126);
    expect(fromString, 5);
}

TEST_F(AWin32Exception, takesTheErrorThatIsGivenAndNotTheLastOne)
{
    platform.handles.setLastError(126);
    expect(Win32Exception("Something failed.", 234), 234);
    expect(Win32Exception(std::string("Something failed."), 2), 2);
    expect(Win32Exception("Something failed.", 0), 0);
}

TEST_F(AWin32Exception, keepsAStatusAsAnUnsignedNumber)
{
    const Win32Exception exception("Something failed.", 0xC0000022);
    expect(exception, 0xC0000022);
    EXPECT_EQ(exception.code().value(), -1073741790);
}

TEST_F(AWin32Exception, isCaughtAsAnErrorOfTheSystem)
{
    try
    {
        throw Win32Exception("Something failed.", 5);
    }
    catch (const std::system_error& error)
    {
        EXPECT_EQ(error.code().value(), 5);
        EXPECT_EQ(std::string(error.what()).find("Something failed."), 0u);
        EXPECT_NE(dynamic_cast<const Win32Exception*>(&error), nullptr);
    }
}

TEST_F(AWin32Exception, isNotMadeOfATextUnasked)
{
    EXPECT_FALSE((std::is_convertible_v<const char*, Win32Exception>));
    EXPECT_FALSE((std::is_convertible_v<std::string, Win32Exception>));
}

} // namespace
