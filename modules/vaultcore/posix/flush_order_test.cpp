#include "vaultcore/container/small_file.h"
#include "vaultcore/job_testing.h"
#include "vaultcore/package/testing_sfx.h"

#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

// The order in which a job asks the system to keep what it has done: content, name, and only then what it replaces.

namespace
{

/// What was asked of the system, while a test listens.
std::vector<std::string>* heard = nullptr;

void tell(const char* step)
{
    if (heard != nullptr)
        heard->emplace_back(step);
}

} // namespace

// These stand in front of the system's own.

extern "C" int fsync(int file)
{
    struct stat status = {};
    ::fstat(file, &status);
    tell(S_ISDIR(status.st_mode) ? "flush folder" : "flush file");
    return static_cast<int>(::syscall(SYS_fsync, file));
}

extern "C" int fdatasync(int file)
{
    tell("flush content");
    return static_cast<int>(::syscall(SYS_fdatasync, file));
}

extern "C" int syncfs(int file) noexcept
{
    tell("flush volume");
    return static_cast<int>(::syscall(SYS_syncfs, file));
}

extern "C" int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) noexcept
{
    tell((flags & RENAME_NOREPLACE) != 0 ? "rename" : "replace");
    return static_cast<int>(::syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags));
}

extern "C" int unlinkat(int folder, const char* name, int flags) noexcept
{
    tell("remove");
    return static_cast<int>(::syscall(SYS_unlinkat, folder, name, flags));
}

namespace VaultCore
{
namespace
{

using Steps = std::vector<std::string>;

class FlushOrderTest : public SfxTest
{
protected:
    ~FlushOrderTest() override { heard = nullptr; }

    template <class Action> static Steps stepsOf(const Action& action)
    {
        Steps steps;
        heard = &steps;
        action();
        heard = nullptr;
        return steps;
    }
};

TEST_F(FlushOrderTest, ofAnEncryption)
{
    const fs::path source = put(inside / "a", "abc");
    EXPECT_EQ(stepsOf([&] { encrypt({source}); }), (Steps{"flush file", "rename", "flush folder"}));
    fs::remove(inside / "a.zel");
    order.destiny = 1;
    EXPECT_EQ(stepsOf([&] { encrypt({source}); }), (Steps{"flush file", "rename", "flush folder", "remove"}));
}

TEST_F(FlushOrderTest, ofAnEncryptionThatWipes)
{
    order.destiny = 2;
    const fs::path source = put(inside / "a", "abc");
    EXPECT_EQ(stepsOf([&] { encrypt({source}); }),
              (Steps{"flush file", "rename", "flush folder", "flush content", "rename", "remove"}));
}

TEST_F(FlushOrderTest, ofADecryption)
{
    provider.give("k");
    const fs::path encrypted = made(put(inside / "a", "abc"));
    EXPECT_EQ(stepsOf([&] { decrypt({encrypted}, true); }), (Steps{"flush file", "rename", "flush folder", "remove"}));
}

TEST_F(FlushOrderTest, ofAPackage)
{
    const fs::path source = put(inside / "a", "abc");
    EXPECT_EQ(stepsOf([&] { pack({source}, DestinyDelete); }),
              (Steps{"flush file", "rename", "flush folder", "remove"}));
}

TEST_F(FlushOrderTest, ofAFolderFromAPackage)
{
    fs::create_directory(inside / "folder");
    put(inside / "folder" / "a", "abc");
    pack({inside / "folder"}, DestinyDelete);
    fs::remove_all(inside / "folder");
    provider.give("k");
    EXPECT_EQ(stepsOf([&] { decrypt({inside / "folder.exe"}, true); }),
              (Steps{"flush folder", "flush file", "rename", "flush folder", "remove"}));
}

/// Behind the first one, which is worked on by itself.
TEST_F(FlushOrderTest, ofManySmallFiles)
{
    order.destiny = 1;
    std::vector<fs::path> sources;
    for (const char* name : {"a", "b", "c", "d", "e", "f"})
        sources.push_back(put(inside / name, name));
    const Steps together{"flush volume", "rename", "rename", "rename", "rename", "rename",
                         "flush volume", "remove", "remove", "remove", "remove", "remove"};
    Steps expected{"flush file", "rename", "flush folder", "remove"};
    expected.insert(expected.end(), together.begin(), together.end());
    EXPECT_EQ(stepsOf([&] { encrypt(sources); }), expected);
}

TEST_F(FlushOrderTest, ofAFewSmallFiles)
{
    const std::vector<fs::path> sources{put(inside / "a", "a"), put(inside / "b", "b")};
    EXPECT_EQ(stepsOf([&] { encrypt(sources); }),
              (Steps{"flush file", "rename", "flush folder", "flush file", "rename", "flush folder"}));
}

/// What is encrypted with a key is worth no more than the key.
TEST_F(FlushOrderTest, ofAKeyFile)
{
    EXPECT_EQ(stepsOf([&] { writeSecretFile(wide(inside / "key"), Bytes(10)); }),
              (Steps{"flush file", "flush folder"}));
}

} // namespace
} // namespace VaultCore
