#include "platform/files.h"

#include "platform/posix/descriptor.h"
#include "platform/testing_folder.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <functional>
#include <vector>

namespace
{

class PosixFilesTest : public testing::Test
{
protected:
    std::wstring at(const std::wstring& name) const { return folder_.path() + L'/' + name; }
    void add(const std::wstring& name) const { TestingFolder::write(at(name), "text"); }

    std::vector<std::wstring> found(const std::wstring& pattern)
    {
        Platform::FoundFile entry;
        std::vector<std::wstring> names;
        const Platform::Handle search = files_.findFirst(pattern, entry);
        for (bool more = search != Platform::InvalidHandle; more; more = files_.findNext(search, entry))
            names.push_back(entry.name);
        files_.findClose(search);
        return names;
    }

    bool isSignalledBy(std::uint32_t filter, const std::function<void()>& change)
    {
        const Platform::Handle notification = files_.findFirstChange(at(L""), false, filter);
        change();
        const bool isSignalled = handles_.wait(notification, 0, false) == Platform::WaitSignalled;
        files_.findCloseChange(notification);
        return isSignalled;
    }

    using Names = std::vector<std::wstring>;
    TestingFolder folder_;
    Platform::Files& files_ = Platform::nativeSystem().files;
    Platform::Handles& handles_ = Platform::nativeSystem().handles;
};

} // namespace

TEST_F(PosixFilesTest, aNameMeansItselfLetterByLetter)
{
    add(L"letter.txt");
    add(L"Letter.txt");
    EXPECT_EQ(found(at(L"letter.txt")), Names{L"letter.txt"});
    EXPECT_EQ(found(at(L"LETTER.txt")), Names{});
}

TEST_F(PosixFilesTest, aFileMayBeNamedLikeAPattern)
{
    add(L"a*.txt");
    add(L"ab.txt");
    add(L"a;b?.txt");
    EXPECT_EQ(found(at(L"a*.txt")), Names{L"a*.txt"});
    EXPECT_EQ(found(at(L"a;b?.txt")), Names{L"a;b?.txt"});
    EXPECT_EQ(found(at(L"a?.txt")), (Names{L"a*.txt", L"ab.txt"}));
    add(L"*");
    EXPECT_EQ(found(at(L"*")), (Names{L"*", L".", L"..", L"a*.txt", L"a;b?.txt", L"ab.txt"}));
}

TEST_F(PosixFilesTest, namesAreFoundWhateverIsInThem)
{
    const Names names{L"-x", L".hidden", L"[1]", L"a b", L"line\nbreak", L"\xDCFF\xDCFE no text"};
    for (const std::wstring& name : names)
    {
        add(name);
        EXPECT_EQ(found(at(name)), Names{name});
    }
    EXPECT_EQ(found(at(L"*")).size(), names.size() + 2);
}

TEST_F(PosixFilesTest, aLinkToAFolderIsAFolderAndABrokenOneIsAFile)
{
    std::filesystem::create_symlink(TestingFolder::fileOf(folder_.path()), TestingFolder::fileOf(at(L"link")));
    std::filesystem::create_symlink("/no such file", TestingFolder::fileOf(at(L"broken")));
    Platform::FoundFile entry;
    files_.findClose(files_.findFirst(at(L"link"), entry));
    EXPECT_EQ(entry.attributes, Platform::AttributeDirectory);
    files_.findClose(files_.findFirst(at(L"broken"), entry));
    EXPECT_EQ(entry.name, L"broken");
    EXPECT_EQ(entry.attributes, 0u);
}

TEST_F(PosixFilesTest, aPathWithoutAFolderIsLookedForInTheWorkingFolder)
{
    const auto before = std::filesystem::current_path();
    add(L"letter.txt");
    std::filesystem::current_path(TestingFolder::fileOf(folder_.path()));
    EXPECT_EQ(found(L"letter.txt"), Names{L"letter.txt"});
    EXPECT_EQ(found(L"*.txt"), Names{L"letter.txt"});
    std::filesystem::current_path(before);
}

TEST_F(PosixFilesTest, aPathWithoutANameFindsNothing)
{
    EXPECT_EQ(found(at(L"")), Names{});
    EXPECT_EQ(found(L""), Names{});
}

TEST_F(PosixFilesTest, aSearchThatIsClosedFindsNothingMore)
{
    Platform::FoundFile entry;
    const Platform::Handle search = files_.findFirst(at(L"*"), entry);
    files_.findClose(search);
    EXPECT_FALSE(files_.findNext(search, entry));
    EXPECT_FALSE(files_.findNext(Platform::InvalidHandle, entry));
}

TEST_F(PosixFilesTest, eachKindOfChangeIsWatchedForByItself)
{
    add(L"letter.txt");
    const std::string letter = Platform::toUtf8(at(L"letter.txt"));
    const auto write = [&]
    {
        const Platform::Descriptor file(open(letter.c_str(), O_WRONLY | O_CLOEXEC));
        ASSERT_EQ(::write(file.get(), "more", 4), 4);
    };
    const auto rename = [&] { std::filesystem::rename(letter, letter + ".bak"), add(L"letter.txt"); };
    const auto protect = [&] { ASSERT_EQ(chmod(letter.c_str(), S_IRUSR | S_IWUSR), 0); };
    EXPECT_TRUE(isSignalledBy(Platform::ChangeLastWrite, write));
    EXPECT_FALSE(isSignalledBy(Platform::ChangeFileName | Platform::ChangeAttributes, write));
    EXPECT_TRUE(isSignalledBy(Platform::ChangeFileName, rename));
    EXPECT_FALSE(isSignalledBy(Platform::ChangeAttributes, rename));
    EXPECT_TRUE(isSignalledBy(Platform::ChangeAttributes, protect));
    EXPECT_FALSE(isSignalledBy(Platform::ChangeFileName | Platform::ChangeLastWrite, protect));
}

TEST_F(PosixFilesTest, aFolderIsNotWatchedWithWhatIsBelowIt)
{
    EXPECT_EQ(files_.findFirstChange(at(L""), true, Platform::ChangeFileName), Platform::InvalidHandle);
}

TEST_F(PosixFilesTest, onlyReadingOfWhatIsThereIsOpened)
{
    add(L"letter.txt");
    constexpr std::uint32_t CreateAlways = 2;
    constexpr std::uint32_t GenericWrite = 0x40000000;
    EXPECT_EQ(files_.open(at(L"letter.txt"), GenericWrite, 0, Platform::OpenExisting, 0), Platform::InvalidHandle);
    EXPECT_EQ(files_.open(at(L"letter.txt"), Platform::GenericRead, 0, CreateAlways, 0), Platform::InvalidHandle);
    EXPECT_EQ(handles_.lastError(), 87u);
}

TEST_F(PosixFilesTest, aFileIsSharedWithOthersWhenThatIsAskedFor)
{
    add(L"letter.txt");
    constexpr std::uint32_t ShareRead = 1;
    const Platform::Handle one =
        files_.open(at(L"letter.txt"), Platform::GenericRead, ShareRead, Platform::OpenExisting, 0);
    const Platform::Handle other =
        files_.open(at(L"letter.txt"), Platform::GenericRead, ShareRead, Platform::OpenExisting, 0);
    EXPECT_NE(other, Platform::InvalidHandle);
    EXPECT_TRUE(handles_.close(one));
    EXPECT_TRUE(handles_.close(other));
}
