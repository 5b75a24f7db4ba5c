#include <filesystem>
#include <gtest/gtest.h>

#include "scenarios/sample_folder.h"
#include "windows/password_dialog.h"

namespace fs = std::filesystem;
using namespace EndToEnd;

namespace
{

constexpr int Keep = 0;
constexpr int Delete = 1;
constexpr int Wipe = 2;
constexpr milliseconds JobLimit{60000};

Path encrypted(Path file)
{
    return file += ".zel";
}

std::string manyBytes(std::size_t count)
{
    std::string bytes;
    for (std::size_t i = 0; i < count; ++i)
        bytes += static_cast<char>((i * 31 + i / 251) & 0xFF);
    return bytes;
}

} // namespace

class PasswordJobs : public testing::Test
{
protected:
    void encrypt(const std::vector<Path>& files, int destiny, const std::wstring& password)
    {
        const RunningProgram program(programUnderTest(), quoted(folder.addEncryptJob(files, destiny)));
        const PasswordDialog dialog = PasswordDialog::of(program);
        ASSERT_TRUE(dialog);
        dialog.typeNewPassword(password);
        dialog.click(PasswordDialog::Proceed);
        EXPECT_EQ(program.exitCode(JobLimit), 0);
        for (const Path& file : files)
            EXPECT_TRUE(fs::exists(encrypted(file))) << file;
    }

    SampleFolder folder;
};

TEST_F(PasswordJobs, encryptAndDecryptToTheSameBytesAfterAWrongPassword)
{
    const std::vector<std::pair<const wchar_t*, std::string>> contents = {
        {L"empty.txt", ""}, {L"letter.txt", "dear reader"}, {L"\u00fcber.bin", manyBytes(3000001)}};
    std::vector<Path> files;
    std::vector<Path> results;
    for (const auto& [name, content] : contents)
    {
        files.push_back(folder.addFile(name, content));
        results.push_back(encrypted(files.back()));
    }
    encrypt(files, Delete, L"cold Winter \u00e9");
    for (const Path& file : files)
        EXPECT_FALSE(fs::exists(file)) << file;
    EXPECT_EQ(contentOf(results[1]).find("dear reader"), std::string::npos);

    const RunningProgram program(programUnderTest(), quoted(folder.addDecryptJob(results)));
    const PasswordDialog first = PasswordDialog::of(program);
    ASSERT_TRUE(first);
    EXPECT_EQ(first.origin(), L"Keep original files (do not delete).");
    first.typePassword(L"cold winter \u00e9");
    first.click(PasswordDialog::Proceed);
    const PasswordDialog second = PasswordDialog::of(program, L"Provide Key for ");
    ASSERT_TRUE(second);
    for (const Path& file : files)
        EXPECT_FALSE(fs::exists(file)) << file;
    for (std::size_t i = 0; i < std::wstring(L"cold winter \u00e9").size(); ++i)
        second.typePassword(L"\b");
    second.typePassword(L"cold Winter \u00e9");
    second.click(PasswordDialog::Proceed);
    EXPECT_EQ(program.exitCode(JobLimit), 0);
    for (std::size_t i = 0; i < files.size(); ++i)
    {
        EXPECT_EQ(contentOf(files[i]), contents[i].second) << files[i];
        EXPECT_TRUE(fs::exists(results[i])) << results[i];
    }
}

TEST_F(PasswordJobs, leaveEverythingWhenTheEncryptionIsCancelled)
{
    const Path file = folder.addFile(L"letter.txt", "dear reader");
    const RunningProgram program(programUnderTest(), quoted(folder.addEncryptJob({file}, Wipe)));
    const PasswordDialog dialog = PasswordDialog::of(program);
    ASSERT_TRUE(dialog);
    dialog.typeNewPassword(L"secret");
    dialog.click(PasswordDialog::Cancel);
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_EQ(contentOf(file), "dear reader");
    EXPECT_FALSE(fs::exists(encrypted(file)));
}

TEST_F(PasswordJobs, leaveEverythingWhenTheDecryptionIsCancelled)
{
    const Path file = folder.addFile(L"letter.txt", "dear reader");
    encrypt({file}, Delete, L"secret");
    const RunningProgram program(programUnderTest(), quoted(folder.addDecryptJob({encrypted(file)}, true)));
    const PasswordDialog dialog = PasswordDialog::of(program);
    ASSERT_TRUE(dialog);
    EXPECT_EQ(dialog.origin(), L"Delete original files after decryption.");
    dialog.window().close();
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_FALSE(fs::exists(file));
    EXPECT_TRUE(fs::exists(encrypted(file)));
}

TEST_F(PasswordJobs, skipIgnoredFiles)
{
    const Path file = folder.addFile(L"letter.txt", "dear reader");
    encrypt({file}, Delete, L"secret");
    const RunningProgram program(programUnderTest(), quoted(folder.addDecryptJob({encrypted(file)}, true)));
    const PasswordDialog dialog = PasswordDialog::of(program);
    ASSERT_TRUE(dialog);
    dialog.click(PasswordDialog::Ignore);
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_FALSE(fs::exists(file));
    EXPECT_TRUE(fs::exists(encrypted(file)));
}

TEST_F(PasswordJobs, deleteTheEncryptedFilesWhenAskedTo)
{
    const Path file = folder.addFile(L"letter.txt", "dear reader");
    encrypt({file}, Delete, L"secret");
    const RunningProgram program(programUnderTest(), quoted(folder.addDecryptJob({encrypted(file)}, true)));
    const PasswordDialog dialog = PasswordDialog::of(program);
    ASSERT_TRUE(dialog);
    dialog.typePassword(L"secret");
    dialog.click(PasswordDialog::Proceed);
    EXPECT_EQ(program.exitCode(JobLimit), 0);
    EXPECT_EQ(contentOf(file), "dear reader");
    EXPECT_FALSE(fs::exists(encrypted(file)));
}

TEST_F(PasswordJobs, workWithAKeyFile)
{
    const Path key = folder.path() / L"my own.zelkey";
    {
        const RunningProgram maker(programUnderTest().parent_path() / L"make_key.exe", L"symmetric " + quoted(key));
        ASSERT_EQ(maker.exitCode(), 0);
    }
    const Path file = folder.addFile(L"letter.txt", "dear reader");
    {
        const RunningProgram program(programUnderTest(), quoted(folder.addEncryptJob({file}, Delete)));
        const PasswordDialog dialog = PasswordDialog::of(program);
        ASSERT_TRUE(dialog);
        dialog.typeKeyFile(key.wstring());
        dialog.click(PasswordDialog::Proceed);
        EXPECT_EQ(program.exitCode(JobLimit), 0);
        EXPECT_FALSE(fs::exists(file));
        ASSERT_TRUE(fs::exists(encrypted(file)));
    }
    const RunningProgram program(programUnderTest(), quoted(folder.addDecryptJob({encrypted(file)})));
    const PasswordDialog dialog = PasswordDialog::of(program);
    ASSERT_TRUE(dialog);
    dialog.typeKeyFile(key.wstring());
    dialog.click(PasswordDialog::Proceed);
    EXPECT_EQ(program.exitCode(JobLimit), 0);
    EXPECT_EQ(contentOf(file), "dear reader");
}

class PasswordJobsByDestiny : public PasswordJobs, public testing::WithParamInterface<int>
{
};

INSTANTIATE_TEST_SUITE_P(Destinies, PasswordJobsByDestiny, testing::Values(Keep, Delete, Wipe));

TEST_P(PasswordJobsByDestiny, dealWithTheOriginalsAsTheJobSays)
{
    const Path file = folder.addFile(L"letter.txt", "dear reader");
    encrypt({file}, GetParam(), L"secret");
    EXPECT_EQ(fs::exists(file), GetParam() == Keep);
}

TEST_P(PasswordJobsByDestiny, dealWithTheOriginalsAsTheLinkSays)
{
    const Path file = folder.addFile(L"letter.txt", "dear reader");
    const RunningProgram program(programUnderTest(), quoted(folder.addEncryptJob({file}, GetParam())));
    const PasswordDialog dialog = PasswordDialog::of(program);
    ASSERT_TRUE(dialog);
    dialog.changeDestiny();
    dialog.typeNewPassword(L"secret");
    dialog.click(PasswordDialog::Proceed);
    EXPECT_EQ(program.exitCode(JobLimit), 0);
    EXPECT_TRUE(fs::exists(encrypted(file)));
    EXPECT_EQ(fs::exists(file), GetParam() == Wipe) << "the next of the three is to keep";
}
