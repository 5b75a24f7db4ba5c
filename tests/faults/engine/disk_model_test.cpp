#include "engine/forgetful_file_system.h"

#include <gtest/gtest.h>

// The disk that forgets: it has to lose what may be lost, and nothing else.

namespace
{

using namespace Faults;
using VaultCore::INewFile;

const auto Nothing = [] { return false; };
const auto Everything = [] { return true; };

std::span<const std::uint8_t> bytesOf(const std::string& text)
{
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

class ADiskThatForgets : public testing::Test
{
protected:
    ADiskThatForgets()
    {
        files.onChange = [this](const DiskModel& now) { disk = now; };
    }

    VaultCore::Place place(const wchar_t* path) { return files.locate(path); }
    VaultCore::NativeText name(const std::string& text) { return {text.begin(), text.end()}; }

    const Files before{{"a", "content"}};
    ForgetfulFileSystem files{before};
    DiskModel disk;
};

TEST_F(ADiskThatForgets, losesANewFileThatWasNotFlushed)
{
    const auto file = files.createNew(place(L"new"));
    file->write(bytesOf("written"));
    EXPECT_EQ(disk.survivors(Nothing), before);
    EXPECT_EQ(disk.survivors(Everything), (Files{{"a", "content"}, {"new", "written"}}));
}

TEST_F(ADiskThatForgets, mayKeepANameWithoutItsContent)
{
    const auto file = files.createNew(place(L"new"));
    file->write(bytesOf("written"));
    file->rename(name("final"));
    bool isName = true;
    int asked = 0;
    EXPECT_EQ(disk.survivors(
                  [&]
                  {
                      isName = ++asked <= 2; // the creation and the new name; then come the bytes
                      return isName;
                  }),
              (Files{{"a", "content"}, {"final", ""}}));
}

TEST_F(ADiskThatForgets, keepsWhatWasPublished)
{
    const auto file = files.createNew(place(L"new"));
    file->write(bytesOf("written"));
    file->publish(name("final"));
    EXPECT_EQ(disk.survivors(Nothing), (Files{{"a", "content"}, {"final", "written"}}));
}

TEST_F(ADiskThatForgets, keepsWhatWasFlushedTogether)
{
    const auto one = files.createNew(place(L"1"));
    const auto two = files.createNew(place(L"2"));
    one->write(bytesOf("one"));
    two->write(bytesOf("two"));
    files.flush({one.get(), two.get()});
    EXPECT_EQ(disk.survivors(Nothing), (Files{{"a", "content"}, {"1", "one"}, {"2", "two"}}));
    one->rename(name("last"));
    EXPECT_EQ(disk.survivors(Nothing), (Files{{"a", "content"}, {"1", "one"}, {"2", "two"}}));
    EXPECT_EQ(disk.survivors(Everything), (Files{{"a", "content"}, {"last", "one"}, {"2", "two"}}));
}

TEST_F(ADiskThatForgets, mayBringBackWhatWasRemoved)
{
    files.remove(place(L"a"), VaultCore::FileKind::File);
    EXPECT_EQ(disk.survivors(Nothing), before);
    EXPECT_EQ(disk.survivors(Everything), Files());
}

TEST_F(ADiskThatForgets, mayKeepOneBlockOfAWriteAndNotTheOther)
{
    const auto file = files.createNew(place(L"new"));
    files.flush({file.get()});
    file->write(bytesOf(std::string(DiskModel::Block, '1') + std::string(DiskModel::Block, '2')));
    int asked = 0;
    const Files found = disk.survivors([&] { return ++asked == 2; });
    EXPECT_EQ(found.at("new"), std::string(DiskModel::Block, '\0') + std::string(DiskModel::Block, '2'));
}

TEST_F(ADiskThatForgets, losesAnOverwriteUntilItIsFlushed)
{
    const auto file = files.openForWipe(place(L"a"));
    file->write(0, bytesOf("CON"));
    EXPECT_EQ(disk.survivors(Nothing), before);
    file->flush();
    EXPECT_EQ(disk.survivors(Nothing), (Files{{"a", "CONtent"}}));
}

TEST_F(ADiskThatForgets, takesAnUnfinishedFileBackWithItsObject)
{
    files.createNew(place(L"new")).reset();
    EXPECT_EQ(files.files(), before);
    const auto file = files.createNew(place(L"new"));
    EXPECT_FALSE(files.removeAbandoned(place(L"new"))) << "somebody makes it";
}

} // namespace
