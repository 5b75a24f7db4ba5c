#include "vaultcore/package/package_files.h"
#include "vaultcore/testing_support.h"

#include <array>

// What packages ask of the file system, on the real one.

namespace VaultCore
{
namespace
{

std::span<const std::uint8_t> bytesIn(const std::string& text)
{
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

FailureCause causeOf(const std::function<void()>& work)
{
    try
    {
        work();
    }
    catch (const FileFailure& failure)
    {
        return failure.cause();
    }
    return FailureCause::Other;
}

class PackageFilesTest : public JobTest
{
protected:
    Place placeIn(const fs::path& below) { return {files->locateFolder(wide(inside)).root, below.native()}; }

    std::unique_ptr<IFileSystem> files = createFileSystem();
};

TEST_F(PackageFilesTest, aNewFileCanBeCutAndWrittenOn)
{
    const auto file = files->createNew(placeIn("part"));
    PackageFileSink sink(*file);
    sink.write(bytesIn("kept, dropped"));
    sink.cutTo(4);
    EXPECT_EQ(sink.size(), 4U);
    sink.write(bytesIn("!"));
    file->publish(fs::path("whole").native());
    EXPECT_EQ(content(inside / "whole"), "kept!");
}

TEST_F(PackageFilesTest, aFileIsReadFromAnyPlace)
{
    put(inside / "a", "0123456789");
    const auto file = files->openForReading(placeIn("a"));
    PackageFileSource source(*file);
    EXPECT_EQ(source.size(), 10U);
    std::array<std::uint8_t, 4> bytes{};
    EXPECT_EQ(source.read(6, bytes), 4U);
    EXPECT_EQ(bytes[0], '6');
    EXPECT_EQ(source.read(0, bytes), 4U);
    EXPECT_EQ(bytes[3], '3');
    EXPECT_EQ(source.read(8, bytes), 2U);
    EXPECT_EQ(source.read(10, bytes), 0U);
    EXPECT_EQ(source.read(1'000'000, bytes), 0U);
}

TEST_F(PackageFilesTest, aFolderIsMadeOnceAndOnlyInAFolder)
{
    files->createFolder(placeIn("one"));
    files->createFolder(placeIn(fs::path("one") / "two"));
    EXPECT_TRUE(fs::is_directory(inside / "one" / "two"));
    EXPECT_EQ(causeOf([&] { files->createFolder(placeIn("one")); }), FailureCause::NameTaken);
    EXPECT_EQ(causeOf([&] { files->createFolder(placeIn(fs::path("none") / "two")); }), FailureCause::Missing);
    put(inside / "file", "x");
    EXPECT_NE(causeOf([&] { files->createFolder(placeIn(fs::path("file") / "two")); }), FailureCause::Other);
    EXPECT_EQ(causeOf([&] { files->createFolder(placeIn("file")); }), FailureCause::NameTaken);
}

TEST_F(PackageFilesTest, aFolderIsNotMadeBehindALink)
{
    std::error_code error;
    fs::create_directory_symlink(outside, inside / "way", error);
    if (error)
        GTEST_SKIP() << "no symbolic links here: " << error.message();
    EXPECT_EQ(causeOf([&] { files->createFolder(placeIn(fs::path("way") / "new")); }), FailureCause::LinkOnTheWay);
    EXPECT_EQ(countIn(outside), 1U);
}

} // namespace
} // namespace VaultCore
