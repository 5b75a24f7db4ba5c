#include "statistics/files.h"

#include "platform/testing_folder.h"

#include <memory>

namespace fs = std::filesystem;

namespace StatisticsModule
{
namespace
{

class APrivateFile : public testing::Test
{
protected:
    fs::path path() const { return TestingFolder::fileOf(folder_.path()) / "a" / "b" / "file"; }

private:
    TestingFolder folder_;
};

} // namespace

TEST_F(APrivateFile, isMadeWithTheFoldersAboveIt)
{
    const PrivateFile file(path());
    EXPECT_TRUE(file.isOpen());
    EXPECT_EQ(file.size(), 0U);
    EXPECT_TRUE(fs::is_regular_file(path()));
}

TEST_F(APrivateFile, growsAtItsEndAndIsCut)
{
    PrivateFile file(path());
    PrivateFile same(path());
    EXPECT_TRUE(file.append("one"));
    EXPECT_TRUE(same.append("two"));
    EXPECT_TRUE(file.append("three"));
    EXPECT_EQ(file.size(), 11U);
    EXPECT_EQ(file.end(5), "three");
    EXPECT_EQ(file.end(100), "onetwothree");
    EXPECT_TRUE(file.cutTo(4));
    EXPECT_EQ(file.end(100), "onet");
    EXPECT_TRUE(file.append("!"));
    EXPECT_EQ(file.end(100), "onet!");
}

TEST_F(APrivateFile, hasOneLock)
{
    auto file = std::make_unique<PrivateFile>(path());
    PrivateFile same(path());
    EXPECT_TRUE(file->tryLock());
    EXPECT_FALSE(same.tryLock());
    file.reset();
    EXPECT_TRUE(same.tryLock());
}

TEST_F(APrivateFile, isNoFolder)
{
    fs::create_directories(path());
    EXPECT_FALSE(PrivateFile(path()).isOpen());
}

TEST_F(APrivateFile, mayBeMovedAndRemovedWhileItIsOpen)
{
    PrivateFile file(path());
    fs::rename(path(), path().replace_filename("moved"));
    EXPECT_TRUE(file.append("x"));
    EXPECT_EQ(fs::file_size(path().replace_filename("moved")), 1U);
    EXPECT_TRUE(fs::remove(path().replace_filename("moved")));
}

} // namespace StatisticsModule
