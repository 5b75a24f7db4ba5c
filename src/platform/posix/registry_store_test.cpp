#include "platform/posix/registry_store.h"

#include "platform/handles.h"
#include "platform/posix/registry_format.h"
#include "platform/posix/testing_store.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cstdlib>

using namespace Platform;

namespace
{

using RegistryStoreTest = TestingStore;

} // namespace

TEST_F(RegistryStoreTest, noFileIsAnEmptyTreeAndReadingMakesNone)
{
    RegistryHandle key = ClosedKey;
    std::wstring name;
    EXPECT_EQ(registry_.openKey(CurrentUser, L"Software", 0, KeyAllAccess, key), ErrorFileNotFound);
    EXPECT_EQ(registry_.enumerateKey(CurrentUser, 0, 260, name), ErrorNoMoreItems);
    EXPECT_EQ(get(L"value"), "error 2");
    EXPECT_FALSE(std::filesystem::exists(folder()));
}

TEST_F(RegistryStoreTest, filesAndFoldersAreTheUsersAlone)
{
    EXPECT_EQ(set(L"value", "1"), 0u);
    EXPECT_EQ(modeOf(parent()), 0700u);
    EXPECT_EQ(modeOf(folder()), 0700u);
    EXPECT_EQ(modeOf(file()), 0600u);
    EXPECT_EQ(modeOf(folder() + "/registry.lock"), 0600u);
    EXPECT_EQ(filesIn(folder()), (std::vector<std::string>{"registry", "registry.lock"}));
}

TEST_F(RegistryStoreTest, filesCanBeReadBackWhateverRightsTheProcessTakesFromNewFiles)
{
    std::filesystem::create_directories(folder());
    const mode_t before = ::umask(0777);
    EXPECT_EQ(set(L"value", "1"), 0u);
    ::umask(before);
    EXPECT_EQ(modeOf(file()), 0600u);
}

TEST_F(RegistryStoreTest, anotherStoreSeesWhatWasWritten)
{
    EXPECT_EQ(set(L"value", "1"), 0u);
    RegistryStore other(folderOfTest);
    RegistryOnTree registry(other);
    EXPECT_EQ(get(registry, L"value"), "1");
    EXPECT_EQ(set(L"value", "2"), 0u);
    EXPECT_EQ(get(registry, L"value"), "2");
    EXPECT_EQ(set(registry, L"value", "3"), 0u);
    EXPECT_EQ(get(L"value"), "3");
}

TEST_F(RegistryStoreTest, aHandleSeesThatItsKeyWasDeletedAndMadeAgainByAnother)
{
    RegistryHandle key = ClosedKey;
    EXPECT_EQ(registry_.createKey(CurrentUser, L"key", 0, KeyAllAccess, key), 0u);
    RegistryStore store(folderOfTest);
    RegistryOnTree other(store);
    EXPECT_EQ(other.deleteSubKey(CurrentUser, L"key"), 0u);
    RegistryHandle again = ClosedKey;
    EXPECT_EQ(other.createKey(CurrentUser, L"key", 0, KeyAllAccess, again), 0u);
    EXPECT_EQ(registry_.setValue(key, L"v", 3, nullptr, 0), ErrorKeyDeleted);
    EXPECT_EQ(other.setValue(again, L"v", 3, nullptr, 0), 0u);
}

TEST_F(RegistryStoreTest, changesThatChangeNothingLeaveTheFileAlone)
{
    EXPECT_EQ(set(L"value", "1"), 0u);
    const auto before = std::filesystem::last_write_time(file());
    const std::string text = content();
    struct stat first = {};
    ::stat(file().c_str(), &first);
    EXPECT_EQ(set(L"value", "1"), 0u);
    EXPECT_EQ(registry_.deleteValue(CurrentUser, L"none"), ErrorFileNotFound);
    struct stat second = {};
    ::stat(file().c_str(), &second);
    EXPECT_EQ(first.st_ino, second.st_ino);
    EXPECT_EQ(std::filesystem::last_write_time(file()), before);
    EXPECT_EQ(content(), text);
}

TEST_F(RegistryStoreTest, aFileOfAWriterThatWasStoppedIsReplacedByTheNext)
{
    EXPECT_EQ(set(L"value", "1"), 0u);
    TestingFolder::write(fromUtf8(folder() + "/registry.new"), "half a fi");
    EXPECT_EQ(get(L"value"), "1");
    EXPECT_EQ(set(L"value", "2"), 0u);
    EXPECT_EQ(filesIn(folder()), (std::vector<std::string>{"registry", "registry.lock"}));
    EXPECT_EQ(get(L"value"), "2");
}

TEST_F(RegistryStoreTest, aStoreThatIsBeingWrittenForTooLongIsTold)
{
    EXPECT_EQ(set(L"value", "1"), 0u);
    RegistryStore hasty(folderOfTest, std::chrono::milliseconds(50));
    RegistryOnTree registry(hasty);
    {
        const Descriptor lock(::open((folder() + "/registry.lock").c_str(), O_RDWR));
        ASSERT_EQ(::flock(lock.get(), LOCK_EX), 0);
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(set(registry, L"value", "2"), ErrorLockViolation);
        EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(50));
        EXPECT_EQ(get(registry, L"value"), "1"); // reading waits for nobody
    }
    EXPECT_EQ(set(registry, L"value", "2"), 0u);
}

TEST_F(RegistryStoreTest, aWriterWaitsForItsTurn)
{
    EXPECT_EQ(set(L"value", "1"), 0u);
    std::thread writer;
    {
        const Descriptor lock(::open((folder() + "/registry.lock").c_str(), O_RDWR));
        ASSERT_EQ(::flock(lock.get(), LOCK_EX), 0);
        writer = std::thread([this] { EXPECT_EQ(set(L"value", "2"), 0u); });
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        EXPECT_EQ(get(L"value"), "1");
    }
    writer.join();
    EXPECT_EQ(get(L"value"), "2");
}

TEST_F(RegistryStoreTest, twoFoldersAreTwoStores)
{
    EXPECT_EQ(set(L"value", "1"), 0u);
    moveTo("/other/jobrunner");
    EXPECT_EQ(get(L"value"), "error 2");
    EXPECT_EQ(set(L"value", "2"), 0u);
    moveTo("/config/jobrunner");
    EXPECT_EQ(get(L"value"), "1");
}

TEST_F(RegistryStoreTest, aLockFileThatWasTakenAwayLocksNobodyOut)
{
    EXPECT_EQ(set(L"value", "1"), 0u);
    const Descriptor lock(::open((folder() + "/registry.lock").c_str(), O_RDWR));
    ASSERT_EQ(::flock(lock.get(), LOCK_EX), 0);
    std::filesystem::remove(folder() + "/registry.lock");
    EXPECT_EQ(set(L"value", "2"), 0u);
    EXPECT_EQ(get(L"value"), "2");
}

TEST_F(RegistryStoreTest, whoeverWaitedForALockFileThatWasTakenAwayWaitsForTheNewOne)
{
    EXPECT_EQ(set(L"value", "1"), 0u);
    const std::string name = folder() + "/registry.lock";
    Descriptor old(::open(name.c_str(), O_RDWR));
    ASSERT_EQ(::flock(old.get(), LOCK_EX), 0);
    std::thread writer([this] { EXPECT_EQ(set(L"value", "2"), 0u); });
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    std::filesystem::remove(name);
    {
        const Descriptor lock(::open(name.c_str(), O_RDWR | O_CREAT, 0600));
        ASSERT_EQ(::flock(lock.get(), LOCK_EX), 0);
        {
            const Descriptor released = std::move(old);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        EXPECT_EQ(get(L"value"), "1");
    }
    writer.join();
    EXPECT_EQ(get(L"value"), "2");
}

TEST_F(RegistryStoreTest, theRootCannotBeDeleted)
{
    RegistryHandle root = ClosedKey;
    EXPECT_EQ(registry_.openKey(CurrentUser, L"", 0, KeyAllAccess, root), 0u);
    EXPECT_EQ(registry_.deleteKeyObject(nullptr, root), 0xC0000121u);
    EXPECT_EQ(registry_.deleteSubKey(CurrentUser, L""), ErrorAccessDenied);
    EXPECT_EQ(set(L"value", "1"), 0u);
}

TEST_F(RegistryStoreTest, theFolderIsTheOneOfTheSettingsOfTheUser)
{
    const Variable config("XDG_CONFIG_HOME", "/my/settings");
    const Variable home("HOME", "/home/me");
    EXPECT_EQ(userSettingsFolder(), "/my/settings/jobrunner");
    const Variable relative("XDG_CONFIG_HOME", "settings");
    EXPECT_EQ(userSettingsFolder(), "/home/me/.config/jobrunner");
    const Variable none("XDG_CONFIG_HOME", nullptr);
    EXPECT_EQ(userSettingsFolder(), "/home/me/.config/jobrunner");
    const Variable homeless("HOME", nullptr);
    EXPECT_TRUE(userSettingsFolder().ends_with("/.config/jobrunner"));
}
