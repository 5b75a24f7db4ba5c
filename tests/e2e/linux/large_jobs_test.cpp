#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "linux/memory_disk.h"
#include "linux/password_jobs.h"

namespace fs = std::filesystem;
using namespace EndToEnd;

namespace
{

/// What takes its time is done on request alone.
bool largeFilesAreWanted()
{
    const char* const asked = std::getenv("JOBRUNNER_LARGE_FILES");
    return asked != nullptr && *asked != '\0';
}

constexpr std::uintmax_t BeyondFourGiB = (std::uintmax_t{4} << 30) + 300000;

void writeAt(const Path& file, std::uintmax_t place, const std::string& text)
{
    std::fstream stream(file, std::ios::in | std::ios::out | std::ios::binary);
    stream.seekp(static_cast<std::streamoff>(place));
    stream << text;
    ASSERT_TRUE(stream.flush());
}

std::string readAt(const Path& file, std::uintmax_t place, std::size_t count)
{
    std::ifstream stream(file, std::ios::binary);
    stream.seekg(static_cast<std::streamoff>(place));
    std::string text(count, '?');
    stream.read(text.data(), static_cast<std::streamsize>(count));
    return text;
}

} // namespace

class LargeJobs : public PasswordJobs
{
};

TEST_F(LargeJobs, takeAFileBeyondFourGiB)
{
    if (!largeFilesAreWanted())
        GTEST_SKIP() << "writes 8 GiB; runs when JOBRUNNER_LARGE_FILES is set";
    if (fs::space(folder.path()).available < 3 * BeyondFourGiB)
        GTEST_SKIP() << "no space for a file beyond 4 GiB and its results";
    const Path file = folder.addFile("large.bin", "start");
    fs::resize_file(file, BeyondFourGiB);
    // One mark behind the place to which a size of 32 bits would wrap, one at the end.
    const std::uintmax_t wrapped = BeyondFourGiB - (std::uintmax_t{1} << 32);
    writeAt(file, wrapped, "early");
    writeAt(file, BeyondFourGiB - 4, "last");
    encrypt({file}, Keep);
    EXPECT_GT(fs::file_size(encrypted(file)), BeyondFourGiB);
    fs::remove(file);
    decrypt({encrypted(file)});
    ASSERT_EQ(fs::file_size(file), BeyondFourGiB);
    EXPECT_EQ(readAt(file, 0, 6), std::string("start\0", 6));
    EXPECT_EQ(readAt(file, wrapped, 5), "early");
    EXPECT_EQ(readAt(file, BeyondFourGiB - 5, 5), std::string("\0last", 5));
}

TEST_F(LargeJobs, takeThousandsOfFiles)
{
    const int count = largeFilesAreWanted() ? 10000 : 2000;
    // Each file is flushed to its disk, which takes a real one minutes.
    const MemoryDisk disk;
    const Path many = disk.isThere() ? disk.path() : folder.path() / "many";
    fs::create_directories(many);
    for (int index = 0; index < count; ++index)
        std::ofstream(many / std::to_string(index)) << "file number " << index;
    encrypt({many});
    PasswordTerminal terminal(folder.addDecryptJob({many}, true));
    ASSERT_TRUE(terminal.asksForPassword()) << terminal.shown();
    terminal.password(Password);
    ASSERT_EQ(terminal.exitCode(), 0) << terminal.shown();
    const auto found = contentBelow(many);
    EXPECT_EQ(found.size(), static_cast<std::size_t>(count));
    for (const auto& [name, content] : found)
        EXPECT_EQ(content, "file number " + name);
}
