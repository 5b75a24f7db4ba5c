#include "platform/posix/text_of_file.h"

#include "platform/testing_folder.h"

#include <unistd.h>

using namespace Platform;

TEST(TheTextOfAFile, isAllOfItWhateverItsLength)
{
    const TestingFolder folder;
    const std::string file = toUtf8(folder.path()) + "/file";
    for (const std::size_t length : {0U, 1U, 4095U, 4096U, 4097U, 10'000U})
    {
        std::string text(length, 'x');
        if (length > 2)
            text[1] = '\0';
        TestingFolder::write(folder.path() + L"/file", text);
        EXPECT_EQ(textOfFile(file), text) << length;
    }
}

TEST(TheTextOfAFile, isEmptyWhereThereIsNone)
{
    const TestingFolder folder;
    EXPECT_EQ(textOfFile(toUtf8(folder.path()) + "/none"), "");
}

// As with the record of a process that ends between the opening and the reading.
TEST(TheTextOfAFile, isEmptyWhereReadingFailsAfterTheOpening)
{
    const TestingFolder folder;
    EXPECT_EQ(textOfFile(toUtf8(folder.path())), "");
}

TEST(TheTextOfAFile, isReadFromTheSystemsOwnRecordsToo)
{
    const std::string record = textOfFile("/proc/self/stat");
    EXPECT_TRUE(record.starts_with(std::to_string(getpid()) + " (")) << record;
}
