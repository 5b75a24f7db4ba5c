#include "vaultcore/job_testing.h"

#include <set>
#include <sys/stat.h>

// Who may read what a job makes, at each moment of the work, when the process takes no rights from new files.

namespace VaultCore
{
namespace
{

class PrivateFilesTest : public ContentJobTest
{
protected:
    PrivateFilesTest()
    {
        files.changeWritten = [this](std::span<std::uint8_t>) { look(); };
        files.beforePublish = [this] { look(); };
    }
    ~PrivateFilesTest() override { ::umask(before); }

    /// Notes the rights of all temporary files, and their names.
    void look()
    {
        for (const fs::directory_entry& entry : fs::directory_iterator(inside))
        {
            if (!isTemporaryName(entry.path().filename().native()))
                continue;
            rights.insert(entry.status().permissions());
            seen.insert(entry.path().filename());
        }
    }

    static constexpr fs::perms OwnersAlone = fs::perms::owner_read | fs::perms::owner_write;
    const mode_t before = ::umask(0);
    std::set<fs::perms> rights;
    std::set<std::string> seen;
};

TEST_F(PrivateFilesTest, areReadableForNobodyElseUntilTheyAreWhole)
{
    provider.give("k");
    const fs::path source = put(inside / "a", std::string(3 << 20, 'x'));
    fs::permissions(source, OwnersAlone);
    encrypt({source});
    fs::remove(source);
    decrypt({withEnding(source)});
    EXPECT_EQ(rights, std::set<fs::perms>{OwnersAlone});
    EXPECT_EQ(fs::status(source).permissions(), OwnersAlone);
    EXPECT_EQ(fs::status(withEnding(source)).permissions(), OwnersAlone);
}

TEST_F(PrivateFilesTest, areReadableForOthersOnceTheyAreWholeWhenTheirSourceIs)
{
    const fs::path source = put(inside / "a", std::string(3 << 20, 'x'));
    bool isWhole = false;
    files.beforePublish = [&] { isWhole = true; };
    files.changeWritten = [&](std::span<std::uint8_t>)
    {
        look();
        EXPECT_FALSE(isWhole);
    };
    encrypt({source});
    EXPECT_EQ(rights, std::set<fs::perms>{OwnersAlone});
    EXPECT_EQ(fs::status(withEnding(source)).permissions(), fs::status(source).permissions());
}

TEST_F(PrivateFilesTest, haveAnotherNameEachTime)
{
    for (int round = 0; round < 20; ++round)
    {
        encrypt({put(inside / "a", "text")});
        fs::remove(inside / "a.zel");
    }
    EXPECT_EQ(seen.size(), 20U);
}

} // namespace
} // namespace VaultCore
