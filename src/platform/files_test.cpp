#include "platform/each_system.h"
#include "platform/files.h"
#include "platform/testing_folder.h"

#include <chrono>
#include <set>

namespace
{

constexpr std::uint32_t Changes = Platform::ChangeFileName | Platform::ChangeAttributes | Platform::ChangeLastWrite;
constexpr std::uint32_t Patience = 10000;

/// Files in a folder of the test, on the disk or in the fake's memory.
class Files : public EachSystem
{
protected:
    Platform::Files& files() { return system().files; }
    Platform::Handles& handles() { return system().handles; }
    bool isNative() const { return GetParam() == Kind::Native; }

    std::wstring at(const std::wstring& name)
    {
        if (isNative() && !folder_)
            folder_.emplace();
        return (isNative() ? folder_->path() : L"C:\\Documents") + system().separator + name;
    }

    std::wstring addFile(const std::wstring& name)
    {
        const std::wstring file = at(name);
        change(file);
        return file;
    }

    std::wstring addFolder(const std::wstring& name)
    {
        const std::wstring folder = at(name);
        if (isNative())
            std::filesystem::create_directory(TestingFolder::fileOf(folder));
        else
            fake().files.change(folder).isFolder = true;
        return folder;
    }

    void change(const std::wstring& path)
    {
        if (isNative())
            TestingFolder::write(path, "text");
        else
            fake().files.change(path);
    }

    Platform::Handle openAlone(const std::wstring& path)
    {
        return files().open(path, Platform::GenericRead, Platform::ShareNothing, Platform::OpenExisting, 0);
    }

    /// The last error after an attempt to open; 0 when it is opened, and then closed.
    std::uint32_t errorOfOpening(const std::wstring& path)
    {
        handles().setLastError(0);
        const Platform::Handle handle = openAlone(path);
        if (handle == Platform::InvalidHandle)
            return handles().lastError();
        EXPECT_TRUE(handles().close(handle));
        return 0;
    }

    /// The names that a search finds; nothing at all when it does not begin.
    std::optional<std::multiset<std::wstring>> found(const std::wstring& pattern)
    {
        Platform::FoundFile entry;
        const Platform::Handle search = files().findFirst(pattern, entry);
        if (search == Platform::InvalidHandle)
            return std::nullopt;
        std::multiset<std::wstring> names;
        do
            names.insert(entry.name);
        while (files().findNext(search, entry));
        files().findClose(search);
        return names;
    }

    using Names = std::multiset<std::wstring>;

private:
    std::optional<TestingFolder> folder_;
};

TEST_P(Files, aFileThatNobodyHoldsIsOpened)
{
    const std::wstring file = addFile(L"letter.txt");
    EXPECT_EQ(errorOfOpening(file), 0u);
    EXPECT_EQ(errorOfOpening(file), 0u) << "once it was closed";
}

TEST_P(Files, aFileThatIsNotThereIsNotFound)
{
    addFile(L"letter.txt");
    EXPECT_EQ(errorOfOpening(at(L"other.txt")), Platform::ErrorFileNotFound);
}

TEST_P(Files, aFolderIsDenied)
{
    EXPECT_EQ(errorOfOpening(addFolder(L"folder")), Platform::ErrorAccessDenied);
}

TEST_P(Files, aFileThatSomebodyHoldsAloneIsASharingViolation)
{
    const std::wstring file = addFile(L"letter.txt");
    Platform::Handle holder = Platform::InvalidHandle;
    if (isNative())
        holder = openAlone(file);
    else
        fake().files.files[file].isLocked = true;
    EXPECT_EQ(errorOfOpening(file), Platform::ErrorSharingViolation);

    if (isNative())
        EXPECT_TRUE(handles().close(holder));
    else
        fake().files.files[file].isLocked = false;
    EXPECT_EQ(errorOfOpening(file), 0u);
}

TEST_P(Files, aFileThatMayOnlyBeReadIsOpened)
{
    const std::wstring file = addFile(L"letter.txt");
    if (isNative())
    {
        using std::filesystem::perms;
        const auto name = TestingFolder::fileOf(file);
        std::filesystem::permissions(name, perms::owner_read | perms::group_read | perms::others_read);
        EXPECT_EQ(errorOfOpening(file), 0u);
        std::filesystem::permissions(name, perms::all);
        return;
    }
    EXPECT_EQ(errorOfOpening(file), 0u);
}

TEST_P(Files, aNotificationStaysSignalledFromTheFirstChangeOn)
{
    const std::wstring file = addFile(L"letter.txt");
    const Platform::Handle notification = files().findFirstChange(at(L""), false, Changes);
    ASSERT_NE(notification, Platform::InvalidHandle);
    EXPECT_EQ(handles().wait(notification, 0, false), Platform::WaitTimedOut);
    change(file);
    EXPECT_EQ(handles().wait(notification, Patience, false), Platform::WaitSignalled);
    for (int again = 0; again < 3; ++again)
        EXPECT_EQ(handles().wait(notification, 0, false), Platform::WaitSignalled);
    files().findCloseChange(notification);
    EXPECT_EQ(handles().wait(notification, 0, false), Platform::WaitFailed);
}

TEST_P(Files, aFileThatComesOrGoesIsAChange)
{
    addFile(L"letter.txt");
    const Platform::Handle coming = files().findFirstChange(at(L""), false, Changes);
    const std::wstring file = addFile(L"other.txt");
    EXPECT_EQ(handles().wait(coming, Patience, false), Platform::WaitSignalled);
    files().findCloseChange(coming);

    const Platform::Handle going = files().findFirstChange(at(L""), false, Changes);
    if (isNative())
        std::filesystem::remove(TestingFolder::fileOf(file));
    else
        fake().files.remove(file);
    EXPECT_EQ(handles().wait(going, Patience, false), Platform::WaitSignalled);
    files().findCloseChange(going);
}

TEST_P(Files, aSearchForANameFindsThatOne)
{
    addFile(L"letter.txt");
    addFile(L"letter.txt.bak");
    EXPECT_EQ(found(at(L"letter.txt")), Names{L"letter.txt"});
}

TEST_P(Files, aSearchForANameThatIsNotThereDoesNotBegin)
{
    addFile(L"letter.txt");
    EXPECT_EQ(found(at(L"other.txt")), std::nullopt);
}

TEST_P(Files, aSearchForEverythingFindsTheFolderItselfAndItsParentToo)
{
    addFile(L"letter.txt");
    addFile(L"~letter.tmp");
    addFile(L"without extension");
    addFolder(L"folder");
    EXPECT_EQ(found(at(L"*")), (Names{L".", L"..", L"letter.txt", L"~letter.tmp", L"without extension", L"folder"}));
}

TEST_P(Files, onlyFoldersCarryTheirAttribute)
{
    addFile(L"letter.txt");
    addFolder(L"folder");
    for (const std::wstring name : {L"letter.txt", L"folder"})
    {
        Platform::FoundFile entry;
        const Platform::Handle search = files().findFirst(at(name), entry);
        ASSERT_NE(search, Platform::InvalidHandle);
        EXPECT_EQ((entry.attributes & Platform::AttributeDirectory) != 0, name == L"folder");
        files().findClose(search);
    }
}

TEST_P(Files, bracketsAndSpacesInANameMeanNothing)
{
    addFile(L"a letter [1].txt");
    addFile(L"a letter 1.txt");
    addFile(L"[ab].txt");
    addFile(L"a.txt");
    EXPECT_EQ(found(at(L"a letter [1].txt")), Names{L"a letter [1].txt"});
    EXPECT_EQ(found(at(L"[ab].txt")), Names{L"[ab].txt"});
    EXPECT_EQ(errorOfOpening(at(L"a letter [1].txt")), 0u);
}

TEST_P(Files, namesOfAllScriptsAreFound)
{
    const std::wstring name = L"Brief \x00FC\x4E2D\x0416.txt";
    const std::wstring file = addFile(name);
    EXPECT_EQ(found(file), Names{name});
    EXPECT_EQ(errorOfOpening(file), 0u);
}

TEST_P(Files, theTimeOfTheLastWriteIsInSeconds)
{
    const std::wstring file = addFile(L"letter.txt");
    constexpr std::int64_t When = 1'234'567'891;
    if (isNative())
    {
        const std::chrono::sys_time<std::chrono::seconds> time{std::chrono::seconds(When)};
        std::filesystem::last_write_time(TestingFolder::fileOf(file), std::chrono::file_clock::from_sys(time));
    }
    else
    {
        fake().files.files[file].modified = When;
    }
    std::int64_t seconds = 0;
    EXPECT_TRUE(files().modificationTime(file, seconds));
    EXPECT_EQ(seconds, When);
}

TEST_P(Files, whatIsNotThereHasNoTimeOfTheLastWrite)
{
    addFile(L"letter.txt");
    std::int64_t seconds = 42;
    EXPECT_FALSE(files().modificationTime(at(L"other.txt"), seconds));
    EXPECT_EQ(seconds, 42);
}

INSTANTIATE_EACH_SYSTEM(Files);

TEST(NativeFiles, aFolderThatIsNotThereHasNoNotificationAndNoSearch)
{
    const TestingFolder folder;
    Platform::System& system = Platform::nativeSystem();
    const std::wstring missing = folder.path() + system.separator + L"missing" + system.separator;
    EXPECT_EQ(system.files.findFirstChange(missing, false, Changes), Platform::InvalidHandle);
    Platform::FoundFile entry;
    EXPECT_EQ(system.files.findFirst(missing + L"*", entry), Platform::InvalidHandle);
}

TEST(NativeFiles, whatHappensFurtherDownIsNoChange)
{
    const TestingFolder folder;
    Platform::System& system = Platform::nativeSystem();
    const std::wstring below = folder.path() + system.separator + L"below";
    std::filesystem::create_directory(TestingFolder::fileOf(below));
    TestingFolder::write(below + system.separator + L"letter.txt", "one");
    const Platform::Handle notification = system.files.findFirstChange(folder.path(), false, Changes);
    TestingFolder::write(below + system.separator + L"letter.txt", "two");
    EXPECT_EQ(system.handles.wait(notification, 200, false), Platform::WaitTimedOut);
    system.files.findCloseChange(notification);
}

TEST(NativeFiles, aFileThatIsOnlyReadIsNoChange)
{
    const TestingFolder folder;
    Platform::System& system = Platform::nativeSystem();
    const std::wstring file = folder.path() + system.separator + L"letter.txt";
    TestingFolder::write(file, "text");
    const Platform::Handle notification = system.files.findFirstChange(folder.path(), false, Changes);
    for (int probe = 0; probe < 3; ++probe)
        system.handles.close(
            system.files.open(file, Platform::GenericRead, Platform::ShareNothing, Platform::OpenExisting, 0));
    EXPECT_EQ(system.handles.wait(notification, 200, false), Platform::WaitTimedOut);
    system.files.findCloseChange(notification);
}

} // namespace
