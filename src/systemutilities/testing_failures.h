#pragma once

#include "systemutilities/file_system_exception.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

/// The failure of an action that has to fail; without one the test fails.
template <class Action> std::optional<Halden::SystemUtilities::FileSystemException> failureOf(const Action& action)
{
    try
    {
        action();
    }
    catch (const Halden::SystemUtilities::FileSystemException& failure)
    {
        return failure;
    }
    ADD_FAILURE() << "nothing was thrown";
    return std::nullopt;
}

/// Whether the action fails with this message and code for this path.
template <class Action>
void expectFailure(const Action& action, const std::string& message, const std::wstring& path, int code)
{
    const auto failure = failureOf(action);
    if (!failure)
        return;
    const Halden::SystemUtilities::FileSystemException expected(message, path, static_cast<std::uint32_t>(code));
    EXPECT_EQ(failure->GetWideMessage(), expected.GetWideMessage());
    EXPECT_EQ(failure->code(), expected.code());
    EXPECT_EQ(failure->path1(), expected.path1());
    EXPECT_TRUE(failure->path2().empty());
}
