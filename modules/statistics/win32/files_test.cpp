#include "statistics/files.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace StatisticsModule
{

TEST(TheJournalOnWindows, isInTheUsersFolderOfLocalData)
{
    const wchar_t* const folder = _wgetenv(L"LOCALAPPDATA");
    ASSERT_NE(folder, nullptr);
    EXPECT_EQ(userJournalFile().wstring(), std::wstring(folder) + L"\\jobrunner\\statistics.log");
}

TEST(TheJournalOnWindows, isNoDevice)
{
    EXPECT_FALSE(PrivateFile("NUL").isOpen());
}

} // namespace StatisticsModule
