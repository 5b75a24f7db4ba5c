#include "platform/paths.h"

#include "platform/handles.h"
#include "platform/platform.h"
#include "platform/testing_folder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace
{

struct PosixPaths : testing::Test
{
    mode_t mode() const
    {
        struct stat status
        {
        };
        return stat(name.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
    }
    void setMode(mode_t to) const { ASSERT_EQ(chmod(name.c_str(), to), 0); }

    TestingFolder folder;
    const std::wstring path = folder.path() + L"/file";
    const std::string name = Platform::toUtf8(path);
    Platform::Paths& paths = Platform::nativeSystem().paths;

    void SetUp() override { TestingFolder::write(path, "content"); }
};

} // namespace

TEST_F(PosixPaths, onlyAFileThatNobodyMayWriteToIsReadOnly)
{
    for (const mode_t writable : {0200u, 0020u, 0002u, 0644u})
    {
        setMode(writable);
        EXPECT_EQ(paths.attributes(path), Platform::AttributeNormal) << writable;
    }
    setMode(0555);
    EXPECT_EQ(paths.attributes(path), Platform::AttributeReadOnly);
}

TEST_F(PosixPaths, theOwnerMayWriteAgainAndEverybodyElseAsBefore)
{
    setMode(0666);
    EXPECT_TRUE(paths.setAttributes(path, Platform::AttributeReadOnly));
    EXPECT_EQ(mode(), 0444u);
    EXPECT_TRUE(paths.setAttributes(path, Platform::AttributeNormal));
    EXPECT_EQ(mode(), 0644u);
}

TEST_F(PosixPaths, aFileThatHasTheAttributesKeepsItsMode)
{
    setMode(0020);
    EXPECT_TRUE(paths.setAttributes(path, Platform::AttributeNormal | 0x22));
    EXPECT_EQ(mode(), 0020u);
    setMode(04555);
    EXPECT_TRUE(paths.setAttributes(path, 0));
    EXPECT_EQ(mode(), 04755u);
}

TEST_F(PosixPaths, aMissingFolderIsAnotherErrorThanAMissingFile)
{
    EXPECT_EQ(paths.longPathName(folder.path() + L"/none/file", nullptr, 0), 0u);
    EXPECT_EQ(Platform::nativeSystem().handles.lastError(), 3u);
}

TEST_F(PosixPaths, aNameThatIsNotUtf8IsFound)
{
    const std::wstring odd = folder.path() + L"/odd \xDCFF";
    TestingFolder::write(odd, "content");
    std::wstring found(odd.size() + 1, L'?');
    EXPECT_EQ(paths.shortPathName(odd, found.data(), static_cast<std::uint32_t>(found.size())), odd.size());
    EXPECT_EQ(found, odd + L'\0');
}
