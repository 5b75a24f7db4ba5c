#include "zelplatform/files.h"

#include "zelplatform/scratch_folder.h"

namespace ZelPlatform
{
namespace
{

class Files : public ScratchFolder
{
};

TEST_F(Files, areReadWhole)
{
    const std::string content("a\r\n\0\xFF z", 7);
    write(file("job"), content);
    EXPECT_EQ(readFile(file("job").wstring(), 7), content);
    EXPECT_FALSE(readFile(file("job").wstring(), 6));
    write(file("empty"), "");
    EXPECT_EQ(readFile(file("empty").wstring(), 0), "");
}

TEST_F(Files, areNothingWhenMissing)
{
    EXPECT_FALSE(readFile(file("missing").wstring(), 100));
    EXPECT_FALSE(readFile(file("missing/missing").wstring(), 100));
    EXPECT_FALSE(readFile(L"", 100));
    EXPECT_FALSE(readFile(file("").wstring(), 100));
}

TEST_F(Files, areReplacedByPathsBeyondTheClassicLimit)
{
    const std::filesystem::path path = longPath();
    ASSERT_GT(path.native().size(), 300U);
    ASSERT_TRUE(replacePrivateFile(path.wstring(), "one"));
    ASSERT_TRUE(replacePrivateFile(path.wstring(), "two"));
    EXPECT_EQ(readFile(path.wstring(), 100), "two");
}

TEST_F(Files, keepTheFormerContentWhenTheyCannotBeReplaced)
{
    std::filesystem::create_directories(file("job") / "inside");
    EXPECT_FALSE(replacePrivateFile(file("job").wstring(), "x"));
    EXPECT_TRUE(std::filesystem::exists(file("job") / "inside"));
    EXPECT_EQ(entries(), 1U);
}

} // namespace
} // namespace ZelPlatform
