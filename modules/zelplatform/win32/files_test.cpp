#include "zelplatform/files.h"

#include "zelplatform/scratch_folder.h"

#include <windows.h>

namespace ZelPlatform
{
namespace
{

class Win32Files : public ScratchFolder
{
};

TEST_F(Win32Files, liveInTheFolderOfApplicationData)
{
    wchar_t folder[MAX_PATH] = {};
    ASSERT_GT(GetEnvironmentVariableW(L"APPDATA", folder, MAX_PATH), 0U);
    EXPECT_EQ(userCommentFile(), std::wstring(folder) + L"\\jobrunner\\sfx-comment.txt");
}

TEST_F(Win32Files, areNothingWhileSomebodyWritesThem)
{
    const HANDLE writer = CreateFileW(file("job").c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      CREATE_ALWAYS, 0, nullptr);
    ASSERT_NE(writer, INVALID_HANDLE_VALUE);
    EXPECT_FALSE(readFile(file("job").wstring(), 100));
    CloseHandle(writer);
    EXPECT_TRUE(readFile(file("job").wstring(), 100));
}

TEST_F(Win32Files, areNotDevices)
{
    EXPECT_FALSE(readFile(L"NUL", 100));
    EXPECT_FALSE(readFile(L"\\\\.\\pipe\\none", 100));
}

} // namespace
} // namespace ZelPlatform
