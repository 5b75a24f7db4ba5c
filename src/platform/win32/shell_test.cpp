#include "platform/shell.h"

#include "platform/processes.h"
#include "platform/testing_folder.h"

#include <windows.h>

#include <array>

namespace Platform
{

namespace
{

class NativeExecution : public testing::Test
{
protected:
    static std::wstring program()
    {
        std::array<wchar_t, 1024> path{};
        GetModuleFileNameW(nullptr, path.data(), 1024);
        return path.data();
    }

    ShellExecution execution(const std::wstring& file)
    {
        return {60, ExecuteKeepProcess | ExecuteWaitForDde | ExecuteWithoutBox, file, folder_.path() + L'\\',
                ShowNormal};
    }

    TestingFolder folder_;
    Shell& shell_ = nativeSystem().shell;
    Handles& handles_ = nativeSystem().handles;
};

TEST_F(NativeExecution, theExecutableOfAProgramIsTheProgram)
{
    std::wstring executable;
    EXPECT_GT(shell_.findExecutable(program(), executable), FindExecutableFailure);
    EXPECT_TRUE(executable.ends_with(L"platform_test.exe")) << testing::PrintToString(executable);
}

TEST_F(NativeExecution, aDocumentThatIsNotThereHasNoExecutable)
{
    std::wstring executable = L"before";
    EXPECT_LE(shell_.findExecutable(folder_.path() + L"\\letter.txt", executable), FindExecutableFailure);
    EXPECT_NE(executable, L"before") << "what the buffer holds comes back in any case";
}

TEST_F(NativeExecution, aDocumentOfAnUnknownKindHasNoExecutableAndIsNotOpened)
{
    const std::wstring file = folder_.path() + L"\\letter.unknownkind";
    TestingFolder::write(file, "text");
    std::wstring executable;
    EXPECT_LE(shell_.findExecutable(file, executable), FindExecutableFailure);
    ShellExecution refused = execution(file);
    EXPECT_FALSE(shell_.execute(refused));
    EXPECT_EQ(refused.process, nullptr);
}

TEST_F(NativeExecution, aProgramThatIsStartedIsGivenAsAProcess)
{
    const std::wstring copy = folder_.path() + L"\\a program [1].exe";
    std::array<wchar_t, MAX_PATH> system{};
    GetSystemDirectoryW(system.data(), MAX_PATH);
    ASSERT_TRUE(CopyFileW((system.data() + std::wstring(L"\\hostname.exe")).c_str(), copy.c_str(), TRUE));
    ShellExecution started = execution(copy);
    ASSERT_TRUE(shell_.execute(started));
    ASSERT_NE(started.process, nullptr);
    EXPECT_EQ(handles_.wait(started.process, 20000, false), WaitSignalled);
    EXPECT_TRUE(handles_.close(started.process));
}

} // namespace

} // namespace Platform
