#pragma once

#include "platform/paths.h"
#include "platform/platform.h"
#include "platform/testing_folder.h"

#include <gtest/gtest.h>

#include <string>

/// Tests with real files in a folder of their own.
struct RealPathsTest : testing::Test
{
    std::wstring file(const std::wstring& name) const
    {
        const std::wstring path = folder.path() + Platform::nativeSystem().separator + name;
        TestingFolder::write(path, "content");
        return path;
    }

    static bool isReadOnly(const std::wstring& path)
    {
        return (Platform::nativeSystem().paths.attributes(path) & Platform::AttributeReadOnly) != 0;
    }

    TestingFolder folder;
};
