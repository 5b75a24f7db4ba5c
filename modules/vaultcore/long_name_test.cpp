#include "vaultcore/testing_support.h"

// Names beyond 260 characters. The folders are made and looked at through the engine's own extended form of a path on
// Windows, where the standard library ends at that limit.

namespace VaultCore
{
namespace
{

fs::path unlimited(const fs::path& path)
{
    if constexpr (NativeSeparator == '\\')
        return fs::path(LR"(\\?\)" + path.wstring());
    else
        return path;
}

class LongNameTest : public JobTest, public testing::WithParamInterface<bool>
{
protected:
    LongNameTest()
    {
        fs::path folder = unlimited(inside);
        for (int i = 0; i < 5; ++i)
        {
            folder /= std::string(100, static_cast<char>('a' + i));
            std::error_code error;
            made = fs::create_directory(folder, error);
        }
        file = folder / "file.txt";
        std::ofstream(file) << "text";
    }

    WatchedFileSystem files;
    Recorder recorder;
    fs::path file;
    bool made = false;
};

INSTANTIATE_TEST_SUITE_P(DeleteAndWipe, LongNameTest, testing::Bool(), &methodName);

TEST_P(LongNameTest, isTakenAsAnEntry)
{
    ASSERT_TRUE(made);
    ASSERT_TRUE(fs::exists(file));
    const std::wstring entry = wide(file);
    ASSERT_GT(entry.size(), 500U);
    const bool prefixed = entry.starts_with(LR"(\\?\)");
    DeletionJob(files, recorder.receivers(), GetParam()).run({prefixed ? entry.substr(4) : entry});
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_FALSE(fs::exists(file));
}

TEST_P(LongNameTest, isTakenInsideAFolder)
{
    ASSERT_TRUE(fs::exists(file));
    removeAll(files, recorder, {inside}, GetParam());
    EXPECT_EQ(recorder.succeeded, 1);
    EXPECT_FALSE(fs::exists(inside));
}

} // namespace
} // namespace VaultCore
