#include "zelplatform/sfx_comment.h"

#include "telemetry/usage_names.h"
#include "zelplatform/files.h"
#include "zelplatform/scratch_folder.h"

#include <thread>
#include <vector>

namespace ZelPlatform
{
namespace
{

class SfxCommentTest : public ScratchFolder
{
protected:
    std::filesystem::path path_ = std::filesystem::path("settings") / "jobrunner" / "sfx-comment.txt";
    std::filesystem::path place() const { return file("") / path_; }
    SfxComment comment() const { return SfxComment(place().wstring()); }
};

TEST_F(SfxCommentTest, isTheBuiltInOneAtFirst)
{
    EXPECT_EQ(comment().load(), builtInSfxComment());
    EXPECT_EQ(builtInSfxComment(), L"This file was encrypted with the Halden suite. www.halden.example");
}

TEST_F(SfxCommentTest, holdsTheDomainByWhichTheProgramKnowsThatItIsNotTheUsersOwn)
{
    EXPECT_NE(builtInSfxComment().find(Halden::ZEL::Telemetry::MakerDomain), std::wstring::npos);
}

TEST_F(SfxCommentTest, comesBackAsItWasSaved)
{
    for (const std::wstring text : {L"Greetings", L"Zw\u00F6lf \U0001F600\r\nlines\n", L""})
    {
        comment().save(text.c_str());
        EXPECT_EQ(comment().load(), text);
    }
}

TEST_F(SfxCommentTest, isKeptAsUtf8)
{
    comment().save(L"\u00E4");
    EXPECT_EQ(readFile(place().wstring(), 100), "\xC3\xA4");
}

TEST_F(SfxCommentTest, leavesNoOtherFileBehind)
{
    comment().save(L"one");
    comment().save(L"two");
    const auto folder = place().parent_path();
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator()), 1);
}

TEST_F(SfxCommentTest, cannotBeReplacedByOneThatIsTooLong)
{
    const std::wstring longest(1024 * 1024, L'x');
    comment().save(longest.c_str());
    EXPECT_EQ(comment().load(), longest);
    comment().save(L"short");
    comment().save((longest + L'x').c_str());
    EXPECT_EQ(comment().load(), L"short");
}

TEST_F(SfxCommentTest, isSilentWhereItCannotBeKept)
{
    write(file("settings"), "a file where a folder should be");
    comment().save(L"lost");
    EXPECT_EQ(comment().load(), builtInSfxComment());

    SfxComment(L"").save(L"lost");
    EXPECT_EQ(SfxComment(L"").load(), builtInSfxComment());
    comment().save(nullptr);
}

TEST_F(SfxCommentTest, givesWayToNoFolder)
{
    std::filesystem::create_directories(place() / "inside");
    comment().save(L"lost");
    EXPECT_EQ(comment().load(), builtInSfxComment());
    const auto folder = place().parent_path();
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator()), 1);
}

TEST_F(SfxCommentTest, isAlwaysAWholeOne)
{
    const std::wstring first(50'000, L'a');
    const std::wstring second(100'000, L'b');
    comment().save(first.c_str());
    std::vector<std::thread> writers;
    for (const std::wstring* text : {&first, &second})
    {
        writers.emplace_back(
            [this, text]
            {
                for (int round = 0; round < 50; ++round)
                    comment().save(text->c_str());
            });
    }
    for (int round = 0; round < 200; ++round)
    {
        const std::wstring seen = comment().load();
        EXPECT_TRUE(seen == first || seen == second) << seen.size();
    }
    for (auto& writer : writers)
        writer.join();
}

} // namespace
} // namespace ZelPlatform
