#include "commands/dc_open_sub_command.h"

#include "fakes/fake_platform.h"

#include <gtest/gtest.h>

#include <type_traits>

using namespace Fakes;
using namespace JobRunner;

namespace
{

const std::wstring Document = L"C:\\docs\\a.txt";
constexpr std::uint32_t Application = 200;
constexpr std::int64_t Hour = 3'600'000;

/// A document whose application is a process that the shell starts.
class AnOpenStep : public testing::Test
{
protected:
    AnOpenStep()
    {
        platform.processes.running = {{platform.processes.current, 1}};
        platform.files.change(Document).modified = 1000;
        platform.shell.executable = L"C:\\Windows\\notepad.exe";
        platform.shell.onExecute = [this](Platform::ShellExecution&)
        {
            platform.processes.start({Application, platform.processes.current});
            for (auto& [milliseconds, action] : meanwhile)
                platform.threads.at(platform.threads.elapsed() + milliseconds, action);
            platform.threads.at(platform.threads.elapsed() + openFor, [this] { platform.processes.end(Application); });
            return true;
        };
    }

    /// What happens so many milliseconds after the start of the application.
    void after(std::int64_t milliseconds, std::function<void()> action)
    {
        meanwhile.emplace_back(milliseconds, std::move(action));
    }

    void saveAfter(std::int64_t milliseconds, std::int64_t time)
    {
        after(milliseconds, [this, time] { platform.files.change(Document).modified = time; });
    }

    void execute() { step.Execute(); }

    FakePlatform platform;
    std::int64_t openFor = 20'000;
    std::vector<std::pair<std::int64_t, std::function<void()>>> meanwhile;
    DcOpenSubCommand step{Document};
};

} // namespace

TEST_F(AnOpenStep, isNeitherOpenedNorModifiedBeforeItRuns)
{
    EXPECT_FALSE(step.WasOpened());
    EXPECT_FALSE(step.WasModified());
    static_assert(std::has_virtual_destructor_v<DcOpenSubCommand>);
}

TEST_F(AnOpenStep, withoutAnApplicationTellsTheUserAndLeavesBothFlagsOff)
{
    platform.shell.onExecute = nullptr;
    // A change of the document is of no interest then.
    platform.messageBoxes.whileShown = [this] { platform.files.change(Document).modified = 2000; };
    execute();
    const std::vector<ShownBox> expected{{L"Cannot open C:\\docs\\a.txt. Possibly there is no known application "
                                          L"associated with this type of file?",
                                          L"Cannot open decrypted file", 0x40}};
    EXPECT_EQ(platform.messageBoxes.boxes(), expected);
    EXPECT_FALSE(step.WasOpened());
    EXPECT_FALSE(step.WasModified());
}

TEST_F(AnOpenStep, ofAnEmptyNameTellsTheUserOfAFileWithoutAName)
{
    platform.shell.onExecute = nullptr;
    DcOpenSubCommand nothing(L"");
    nothing.Execute();
    EXPECT_EQ(platform.messageBoxes.boxes().at(0).text,
              L"Cannot open . Possibly there is no known application associated with this type of file?");
    EXPECT_FALSE(nothing.WasOpened());
}

TEST_F(AnOpenStep, thatIsClosedWithoutASaveIsNotModifiedHoweverLongItWasOpen)
{
    openFor = Hour / 2;
    execute();
    EXPECT_TRUE(step.WasOpened());
    EXPECT_FALSE(step.WasModified());
    EXPECT_GE(platform.threads.elapsed(), openFor);
    EXPECT_TRUE(platform.messageBoxes.boxes().empty());
}

TEST_F(AnOpenStep, thatIsSavedIsModified)
{
    saveAfter(5000, 1001);
    execute();
    EXPECT_TRUE(step.WasOpened());
    EXPECT_TRUE(step.WasModified());
}

TEST_F(AnOpenStep, doesNotSeeSavesWithinTheSecondOfTheDocumentsOwnTime)
{
    saveAfter(2000, 1000);
    saveAfter(2400, 1000);
    execute();
    EXPECT_TRUE(step.WasOpened());
    EXPECT_FALSE(step.WasModified());
}

TEST_F(AnOpenStep, isModifiedWhenTheTimeGoesBackwards)
{
    saveAfter(5000, 999);
    execute();
    EXPECT_TRUE(step.WasModified());
}

TEST_F(AnOpenStep, isModifiedWhenTheDocumentIsGone)
{
    after(5000, [this] { platform.files.remove(Document); });
    execute();
    EXPECT_TRUE(step.WasOpened());
    EXPECT_TRUE(step.WasModified());
}

TEST_F(AnOpenStep, isNotModifiedWhenTheDocumentHasNoTimeBeforeAndAfter)
{
    platform.files.remove(Document);
    after(0, [this] { platform.files.change(Document).modified = 1500; });
    after(5000, [this] { platform.files.remove(Document); });
    execute();
    EXPECT_TRUE(step.WasOpened());
    EXPECT_FALSE(step.WasModified());
}

TEST(GetModificationTime, isThatOfTheFileInSeconds)
{
    FakePlatform platform;
    platform.files.change(Document).modified = std::int64_t{1} << 40;
    EXPECT_EQ(GetModificationTime(Document), std::int64_t{1} << 40);
}

TEST(GetModificationTime, isZeroOfAFileThatIsNotThere)
{
    const FakePlatform platform;
    EXPECT_EQ(GetModificationTime(Document), 0);
}
