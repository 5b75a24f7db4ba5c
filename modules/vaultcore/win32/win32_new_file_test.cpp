#include "vaultcore/job_testing.h"
#include "vaultcore/win32/win32_files.h"

namespace VaultCore
{
namespace
{

class Win32NewFileTest : public ContentJobTest
{
protected:
    static FileHandle open(const fs::path& path, DWORD access, DWORD share)
    {
        return FileHandle(CreateFileW(path.c_str(), access, share, nullptr, OPEN_EXISTING, 0, nullptr));
    }
};

TEST_F(Win32NewFileTest, carriesTheAttributesOfTheSourceThereAndBack)
{
    const fs::path source = put(inside / "a", "text");
    const DWORD attributes = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_ARCHIVE;
    ASSERT_TRUE(SetFileAttributesW(source.c_str(), attributes));
    const DWORD before = GetFileAttributesW(source.c_str());
    const fs::path encrypted = made(source);
    EXPECT_EQ(GetFileAttributesW(encrypted.c_str()), before);
    provider.give("k");
    decrypt({encrypted}, true);
    EXPECT_EQ(GetFileAttributesW(source.c_str()), before);
    EXPECT_EQ(countIn(inside), 1U);
    SetFileAttributesW(source.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(Win32NewFileTest, reportsASourceThatSomebodyMayWriteMeanwhile)
{
    const fs::path source = put(inside / "a", "text");
    FileHandle held = open(source, GENERIC_WRITE, ShareAll);
    ASSERT_NE(held.get(), INVALID_HANDLE_VALUE);
    recorder.errorAnswer = [&]
    {
        held = FileHandle(INVALID_HANDLE_VALUE);
        return recorder.messages.size() < 3 ? FileErrorRepeat : FileErrorSkip;
    };
    encrypt({source});
    EXPECT_EQ(recorder.messages, Log{L"The file is in use by another program."});
    EXPECT_EQ(recorder.succeeded, 1);
}

TEST_F(Win32NewFileTest, takesALeftOverAwayOnlyWhenNobodyHasIt)
{
    const fs::path source = put(inside / "a", "text");
    const fs::path left = put(inside / ".~a.abcdefgh.zel-part", "left over");
    FileHandle held = open(left, GENERIC_READ, FILE_SHARE_READ);
    encrypt({source});
    EXPECT_TRUE(fs::exists(left));
    held = FileHandle(INVALID_HANDLE_VALUE);
    fs::remove(inside / "a.zel");
    encrypt({source});
    EXPECT_FALSE(fs::exists(left));
    EXPECT_EQ(recorder.succeeded, 2);
}

TEST_F(Win32NewFileTest, takesTheEndingInCapitalLetters)
{
    const fs::path encrypted = made(put(inside / "a", "text"));
    fs::rename(encrypted, inside / "A.ZEL");
    provider.give("k");
    decrypt({inside}, true);
    EXPECT_EQ(content(inside / "a"), "text");
}

} // namespace
} // namespace VaultCore
