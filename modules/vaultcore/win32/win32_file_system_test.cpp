#include "vaultcore/testing_support.h"
#include "vaultcore/win32/win32_files.h"

#include <chrono>
#include <winioctl.h>

namespace VaultCore
{
namespace
{

class Win32FileSystemTest : public JobTest, public testing::WithParamInterface<bool>
{
protected:
    static FileHandle open(const fs::path& path, DWORD access, DWORD share)
    {
        return FileHandle(CreateFileW(path.c_str(), access, share, nullptr, OPEN_EXISTING, 0, nullptr));
    }

    WatchedFileSystem files;
    Recorder recorder;
};

INSTANTIATE_TEST_SUITE_P(DeleteAndWipe, Win32FileSystemTest, testing::Bool(), &methodName);

TEST_P(Win32FileSystemTest, reportsAFileThatIsHeldOpenAndTakesItAtTheRepeat)
{
    const fs::path file = put(inside / "a", "text");
    FileHandle held = open(file, GENERIC_READ, 0);
    ASSERT_NE(held.get(), INVALID_HANDLE_VALUE);
    recorder.errorAnswer = [&]
    {
        held = FileHandle(INVALID_HANDLE_VALUE);
        return recorder.messages.size() < 3 ? FileErrorRepeat : FileErrorSkip;
    };
    removeAll(files, recorder, {file}, GetParam());
    EXPECT_EQ(recorder.messages.at(0), L"The file is in use by another program.");
    EXPECT_EQ(recorder.messages.size(), 1U);
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_FALSE(fs::exists(file));
}

TEST_P(Win32FileSystemTest, reportsAFileThatIsHeldOpenWithAllSharing)
{
    const fs::path file = put(inside / "a", "text");
    const FileHandle held = open(file, GENERIC_READ, ShareAll);
    removeAll(files, recorder, {file}, GetParam());
    EXPECT_EQ(recorder.failed, 1);
    EXPECT_EQ(recorder.messages.at(0), L"The file is in use by another program.");
    EXPECT_TRUE(fs::exists(file));
}

TEST_P(Win32FileSystemTest, matchesPatternsInCapitalAndSmallLettersAlike)
{
    put(inside / "a.TXT", "text");
    put(inside / "b.txt", "text");
    put(inside / "c.dat", "text");
    removeAll(files, recorder, {inside / "*.Txt"}, GetParam());
    EXPECT_EQ(recorder.succeeded, 2);
    EXPECT_EQ(countIn(inside), 1U);
}

TEST_P(Win32FileSystemTest, takesOneFileInTwoSpellingsOnce)
{
    put(inside / "a.txt", "text");
    removeAll(files, recorder, {inside / "a.txt", inside / "A.TXT"}, GetParam());
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_EQ(recorder.failed, 0);
}

TEST_P(Win32FileSystemTest, takesAFileWithTheReadOnlyAttribute)
{
    const fs::path file = put(inside / "a", "text");
    ASSERT_TRUE(SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN));
    removeAll(files, recorder, {file}, GetParam());
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_FALSE(fs::exists(file));
}

TEST_P(Win32FileSystemTest, givesTheReadOnlyAttributeBackToAFileThatStays)
{
    const fs::path file = put(inside / "a", "text");
    ASSERT_TRUE(SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY));
    const FileHandle held = open(file, GENERIC_READ, FILE_SHARE_READ);
    removeAll(files, recorder, {file}, GetParam());
    EXPECT_EQ(recorder.failed, 1);
    EXPECT_NE(GetFileAttributesW(file.c_str()) & FILE_ATTRIBUTE_READONLY, 0U);
}

TEST_P(Win32FileSystemTest, takesForwardSlashes)
{
    put(inside / "a", "text");
    std::wstring entry = (inside / "a").wstring();
    std::replace(entry.begin(), entry.end(), L'\\', L'/');
    DeletionJob(files, recorder.receivers(), GetParam()).run({entry});
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_EQ(countIn(inside), 0U);
}

TEST_P(Win32FileSystemTest, wipesASparseFileOfAGigabyteQuickly)
{
    const fs::path file = put(inside / "sparse", "start");
    {
        const FileHandle handle = open(file, GENERIC_READ | GENERIC_WRITE, 0);
        DWORD bytes = 0;
        DeviceIoControl(handle.get(), FSCTL_SET_SPARSE, nullptr, 0, nullptr, 0, &bytes, nullptr);
    }
    if ((GetFileAttributesW(file.c_str()) & FILE_ATTRIBUTE_SPARSE_FILE) == 0)
        GTEST_SKIP() << "no sparse files here";
    fs::resize_file(file, std::uint64_t{1} << 30);
    const auto begin = std::chrono::steady_clock::now();
    removeAll(files, recorder, {file}, GetParam());
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - begin;
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_LE(files.bytesWritten, 2 * WipeChunk);
    EXPECT_LT(passed.count(), 5.0);
}

} // namespace
} // namespace VaultCore
