#include "platform/files.h"

#include "platform/testing_folder.h"

#include <windows.h>

namespace Platform
{

namespace
{

class NativeWindowsFiles : public testing::Test
{
protected:
    std::wstring addFile(const std::wstring& name)
    {
        const std::wstring file = folder_.path() + L'\\' + name;
        TestingFolder::write(file, "text");
        return file;
    }

    std::uint32_t errorOfOpening(const std::wstring& path)
    {
        handles_.setLastError(0);
        const Handle handle = files_.open(path, GenericRead, ShareNothing, OpenExisting, 0);
        const std::uint32_t error = handles_.lastError();
        if (handle == InvalidHandle)
            return error;
        handles_.close(handle);
        return 0;
    }

    /// Opens the file as another program would, while this object lives.
    struct Holder
    {
        Holder(const std::wstring& path, DWORD access, DWORD share)
            : handle(CreateFileW(path.c_str(), access, share, nullptr, OPEN_EXISTING, 0, nullptr))
        {
            EXPECT_NE(handle, INVALID_HANDLE_VALUE);
        }
        ~Holder() { CloseHandle(handle); }
        HANDLE handle;
    };

    TestingFolder folder_;
    Files& files_ = nativeSystem().files;
    Handles& handles_ = nativeSystem().handles;
};

TEST_F(NativeWindowsFiles, whoeverHasAFileOpenKeepsItFromBeingOpenedAlone)
{
    const std::wstring file = addFile(L"letter.txt");
    constexpr DWORD All = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    {
        const Holder reader(file, GENERIC_READ, All);
        EXPECT_EQ(errorOfOpening(file), ErrorSharingViolation);
    }
    {
        const Holder writer(file, GENERIC_READ | GENERIC_WRITE, All);
        EXPECT_EQ(errorOfOpening(file), ErrorSharingViolation);
    }
    EXPECT_EQ(errorOfOpening(file), 0u);
}

TEST_F(NativeWindowsFiles, aProbeKeepsOthersOutOnlyWhileItIsOpen)
{
    const std::wstring file = addFile(L"letter.txt");
    const Handle probe = files_.open(file, GenericRead, ShareNothing, OpenExisting, 0);
    EXPECT_EQ(errorOfOpening(file), ErrorSharingViolation);
    handles_.close(probe);
    EXPECT_EQ(errorOfOpening(file), 0u);
}

TEST_F(NativeWindowsFiles, aFileInAFolderThatIsNotThereHasAnErrorOfItsOwn)
{
    EXPECT_EQ(errorOfOpening(folder_.path() + L"\\missing\\letter.txt"),
              static_cast<std::uint32_t>(ERROR_PATH_NOT_FOUND));
}

TEST_F(NativeWindowsFiles, namesAreFoundWhateverTheirCaseAndAsTheyAreWritten)
{
    addFile(L"Letter [1].TXT");
    FoundFile entry;
    const Handle search = files_.findFirst(folder_.path() + L"\\letter [1].txt", entry);
    ASSERT_NE(search, InvalidHandle);
    EXPECT_EQ(entry.name, L"Letter [1].TXT");
    EXPECT_FALSE(files_.findNext(search, entry));
    EXPECT_EQ(entry.name, L"Letter [1].TXT") << "unchanged at the end";
    files_.findClose(search);
}

TEST_F(NativeWindowsFiles, aSearchHoldsNoFile)
{
    const std::wstring file = addFile(L"letter.txt");
    FoundFile entry;
    const Handle search = files_.findFirst(file, entry);
    EXPECT_EQ(errorOfOpening(file), 0u);
    files_.findClose(search);
}

TEST_F(NativeWindowsFiles, aChangedAttributeIsAChange)
{
    const std::wstring file = addFile(L"letter.txt");
    const Handle notification = files_.findFirstChange(folder_.path() + L'\\', false, ChangeAttributes);
    ASSERT_NE(notification, InvalidHandle);
    EXPECT_EQ(handles_.wait(notification, 0, false), WaitTimedOut);
    SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(handles_.wait(notification, 10000, false), WaitSignalled);
    files_.findCloseChange(notification);
    SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(NativeWindowsFiles, aPathThatBecomesTooLongIsEmpty)
{
    EXPECT_EQ(files_.append(std::wstring(MAX_PATH - 1, L'a'), L"*"), L"");
    EXPECT_EQ(files_.append(std::wstring(MAX_PATH + 40, L'a'), L"*"), L"");
}

} // namespace

} // namespace Platform
