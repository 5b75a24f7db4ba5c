#include "platform/posix/registry_store.h"

#include "platform/handles.h"
#include "platform/posix/registry_format.h"
#include "platform/posix/testing_store.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>

using namespace Platform;

namespace
{

using RegistryStoreFailures = TestingStore;

/// Everything that a registry can be asked gives this.
void expectEverywhere(RegistryOnTree& registry, std::uint32_t error)
{
    RegistryHandle key = ClosedKey;
    std::wstring name;
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    EXPECT_EQ(registry.openKey(CurrentUser, L"a", 0, KeyRead, key), error);
    EXPECT_EQ(registry.createKey(CurrentUser, L"a", 0, KeyRead, key), error);
    EXPECT_EQ(registry.queryValue(CurrentUser, L"v", type, nullptr, size), error);
    EXPECT_EQ(registry.setValue(CurrentUser, L"v", 3, nullptr, 0), error);
    EXPECT_EQ(registry.deleteValue(CurrentUser, L"v"), error);
    EXPECT_EQ(registry.deleteSubKey(CurrentUser, L"a"), error);
    EXPECT_EQ(registry.enumerateKey(CurrentUser, 0, 260, name), error);
    EXPECT_EQ(registry.enumerateValue(CurrentUser, 0, 260, name, type, nullptr, size), error);
}

/// No file may grow beyond this while it is there.
class LargestFile
{
public:
    explicit LargestFile(rlim_t size)
    {
        ::getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{size, before_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        handler_ = std::signal(SIGXFSZ, SIG_IGN);
    }
    ~LargestFile()
    {
        ::setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }

private:
    rlimit before_{};
    void (*handler_)(int) = nullptr;
};

} // namespace

TEST_F(RegistryStoreFailures, aDamagedFileIsToldByEveryOperationAndStaysAsItIs)
{
    EXPECT_EQ(set(L"value", "1"), 0u);
    const std::string damaged = content().substr(0, 40);
    write(damaged);
    expectEverywhere(registry_, ErrorRegistryCorrupt);
    EXPECT_EQ(content(), damaged);
    EXPECT_EQ(filesIn(folder()), (std::vector<std::string>{"registry", "registry.lock"}));
}

TEST_F(RegistryStoreFailures, aDamagedFileThatIsMendedIsReadAgain)
{
    EXPECT_EQ(set(L"value", "1"), 0u);
    const std::string text = content();
    write("damage");
    EXPECT_EQ(get(L"value"), "error 1015");
    write(text);
    EXPECT_EQ(get(L"value"), "1");
}

TEST_F(RegistryStoreFailures, anEmptyFileIsDamaged)
{
    std::filesystem::create_directories(folder());
    write("");
    expectEverywhere(registry_, ErrorRegistryCorrupt);
}

TEST_F(RegistryStoreFailures, aFileThatIsTooLargeIsDamaged)
{
    std::filesystem::create_directories(folder());
    write("");
    std::filesystem::resize_file(file(), 17 * 1024 * 1024);
    EXPECT_EQ(get(L"value"), "error 1015");
    EXPECT_EQ(set(L"value", "1"), ErrorRegistryCorrupt);
}

TEST_F(RegistryStoreFailures, aValueThatMakesTheFileTooLargeIsRefused)
{
    EXPECT_EQ(set(L"value", "1"), 0u);
    EXPECT_EQ(set(L"large", std::string(9 * 1024 * 1024, 'x')), ErrorDiskFull);
    EXPECT_EQ(get(L"value"), "1");
    EXPECT_EQ(get(L"large"), "error 2");
}

TEST_F(RegistryStoreFailures, aFullDiskLeavesTheOldContent)
{
    EXPECT_EQ(set(L"value", "1"), 0u);
    const std::string before = content();
    {
        const LargestFile limit(1000);
        EXPECT_EQ(set(L"value", std::string(1000, 'x')), ErrorDiskFull);
    }
    EXPECT_EQ(content(), before);
    EXPECT_EQ(filesIn(folder()), (std::vector<std::string>{"registry", "registry.lock"}));
    EXPECT_EQ(get(L"value"), "1");
    EXPECT_EQ(set(L"value", "2"), 0u);
    EXPECT_EQ(get(L"value"), "2");
}

TEST_F(RegistryStoreFailures, aFileThatMayNotBeReadOrWrittenIsDenied)
{
    const Unprivileged user(parent());
    EXPECT_EQ(set(L"value", "1"), 0u);
    const std::string before = content();
    ::chmod(file().c_str(), 0400);
    EXPECT_EQ(get(L"value"), "1");
    EXPECT_EQ(set(L"value", "2"), ErrorAccessDenied);
    EXPECT_EQ(content(), before);
    ::chmod(file().c_str(), 0);
    RegistryStore store(folderOfTest);
    RegistryOnTree other(store);
    expectEverywhere(other, ErrorAccessDenied);
    ::chmod(file().c_str(), 0600);
    EXPECT_EQ(content(), before);
}

TEST_F(RegistryStoreFailures, aFolderThatMayNotBeWrittenOrSearchedIsDenied)
{
    const Unprivileged user(parent());
    EXPECT_EQ(set(L"value", "1"), 0u);
    ::chmod(folder().c_str(), 0500);
    EXPECT_EQ(get(L"value"), "1");
    EXPECT_EQ(set(L"value", "2"), ErrorAccessDenied);
    ::chmod(folder().c_str(), 0);
    EXPECT_EQ(get(L"value"), "error 5");
    EXPECT_EQ(set(L"value", "2"), ErrorAccessDenied);
    ::chmod(folder().c_str(), 0700);
    EXPECT_EQ(get(L"value"), "1");
}

TEST_F(RegistryStoreFailures, aFolderThatMayNotBeMadeIsDenied)
{
    const Unprivileged user(parent());
    ::chmod(parent().c_str(), 0500);
    EXPECT_EQ(get(L"value"), "error 2");
    EXPECT_EQ(set(L"value", "1"), ErrorAccessDenied);
    ::chmod(parent().c_str(), 0700);
}

TEST_F(RegistryStoreFailures, whatBelongsToAnotherUserIsRefused)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can give files away";
    constexpr uid_t Nobody = 65534;
    EXPECT_EQ(set(L"value", "1"), 0u);
    ASSERT_EQ(::chown(file().c_str(), Nobody, Nobody), 0);
    expectEverywhere(registry_, ErrorAccessDenied);
    ASSERT_EQ(::chown(file().c_str(), 0, 0), 0);
    ASSERT_EQ(::chown((folder() + "/registry.lock").c_str(), Nobody, Nobody), 0);
    EXPECT_EQ(set(L"value", "2"), ErrorAccessDenied);
    ASSERT_EQ(::chown((folder() + "/registry.lock").c_str(), 0, 0), 0);
    ASSERT_EQ(::chown(folder().c_str(), Nobody, Nobody), 0);
    EXPECT_EQ(set(L"value", "2"), ErrorAccessDenied);
    EXPECT_EQ(get(L"value"), "1");
}

TEST_F(RegistryStoreFailures, aLinkInPlaceOfAFileIsNotFollowed)
{
    EXPECT_EQ(set(L"value", "1"), 0u);
    const std::string elsewhere = parent() + "/elsewhere";
    std::filesystem::rename(file(), elsewhere);
    std::filesystem::create_symlink(elsewhere, file());
    expectEverywhere(registry_, ErrorAccessDenied);
    std::filesystem::remove(file());
    std::filesystem::rename(elsewhere, file());

    std::filesystem::create_symlink(elsewhere, folder() + "/registry.new");
    EXPECT_EQ(set(L"value", "2"), 0u);
    EXPECT_FALSE(std::filesystem::exists(elsewhere));

    std::filesystem::remove(folder() + "/registry.lock");
    std::filesystem::create_symlink(elsewhere, folder() + "/registry.lock");
    EXPECT_EQ(set(L"value", "3"), ErrorAccessDenied);
    EXPECT_FALSE(std::filesystem::exists(elsewhere));
    EXPECT_EQ(get(L"value"), "2");
}

TEST_F(RegistryStoreFailures, whatIsNoFileIsRefusedAndNotWaitedFor)
{
    std::filesystem::create_directories(file());
    expectEverywhere(registry_, ErrorAccessDenied);
    std::filesystem::remove(file());
    ASSERT_EQ(::mkfifo(file().c_str(), 0600), 0);
    expectEverywhere(registry_, ErrorAccessDenied);
    std::filesystem::remove(file());
    std::filesystem::remove(folder() + "/registry.lock");
    ASSERT_EQ(::mkfifo((folder() + "/registry.lock").c_str(), 0600), 0);
    EXPECT_EQ(set(L"value", "1"), ErrorAccessDenied);
}

TEST_F(RegistryStoreFailures, aFileInPlaceOfTheFolderIsAnEmptyTreeThatCannotBeWritten)
{
    std::filesystem::create_directories(parent());
    TestingFolder::write(fromUtf8(folder()), "a file");
    EXPECT_EQ(get(L"value"), "error 2");
    EXPECT_EQ(set(L"value", "1"), ErrorAccessDenied);
}

TEST_F(RegistryStoreFailures, aUserWithoutAFolderHasAnEmptyTreeThatCannotBeWritten)
{
    RegistryStore store([] { return std::string(); });
    RegistryOnTree registry(store);
    EXPECT_EQ(get(registry, L"value"), "error 2");
    EXPECT_EQ(set(registry, L"value", "1"), ErrorAccessDenied);
}
