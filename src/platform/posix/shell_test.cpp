#include "platform/shell.h"

#include "platform/handles.h"
#include "platform/posix/testing_desktop.h"

#include <unistd.h>

#include <fstream>
#include <iterator>

namespace
{

constexpr std::uint32_t Patience = 30000;

class OpeningADocument : public testing::Test
{
protected:
    std::wstring at(const std::wstring& name) const { return folder_.path() + L'/' + name; }
    std::wstring addDocument(const std::wstring& name)
    {
        TestingFolder::write(at(name), TestingDesktop::Content);
        return at(name);
    }
    std::string textOf(const std::wstring& name) const
    {
        std::ifstream file(TestingFolder::fileOf(at(name)), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void addEditor(const std::string& lines)
    {
        desktop_.addApplication("editor", desktop_.addScript("editor.sh", lines) + " --open %f");
        desktop_.makeDefault("editor");
    }

    Platform::ShellExecution execution(const std::wstring& file, const std::wstring& directory)
    {
        return {60, 0x540, file, directory, Platform::ShowNormal, nullptr};
    }

    /// Opens it and waits until the application has ended.
    bool isOpened(const std::wstring& file, const std::wstring& directory = {})
    {
        Platform::ShellExecution opening = execution(file, directory);
        if (!shell_.execute(opening))
            return false;
        EXPECT_EQ(handles_.wait(opening.process, Patience, false), Platform::WaitSignalled);
        EXPECT_TRUE(handles_.close(opening.process));
        return true;
    }

    std::intptr_t found(const std::wstring& file) { return shell_.findExecutable(file, executable_); }

    TestingFolder folder_;
    TestingDesktop desktop_{at(L"desktop")};
    Platform::Shell& shell_ = Platform::nativeSystem().shell;
    Platform::Handles& handles_ = Platform::nativeSystem().handles;
    std::wstring executable_ = L"before";
};

const std::string ReportArguments = "printf '%s|' \"$@\" > \"$(dirname \"$0\")/../report\"\n";

} // namespace

TEST_F(OpeningADocument, startsItsApplicationWithThePathAsItIs)
{
    addEditor(ReportArguments);
    for (const std::wstring name : {L"letter", L"with a space", L"[1] 'a' \"b\" $(c) `d` \\ %f %% ;&", L"-letter",
                                    L"line\nbreak", L"\xDCFF\xDCFE no text", L"\x4E2D\x0416"})
    {
        const std::wstring document = addDocument(name);
        EXPECT_TRUE(isOpened(document)) << Platform::toUtf8(name);
        EXPECT_EQ(textOf(L"report"), "--open|" + Platform::toUtf8(document) + '|');
    }
}

TEST_F(OpeningADocument, givesANameOfTheWorkingFolderItsFullPath)
{
    addEditor(ReportArguments);
    const std::wstring document = addDocument(L"-letter");
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(TestingFolder::fileOf(folder_.path()));
    EXPECT_TRUE(isOpened(L"-letter"));
    std::filesystem::current_path(before);
    EXPECT_EQ(textOf(L"report"), "--open|" + Platform::toUtf8(document) + '|');
}

TEST_F(OpeningADocument, letsTheApplicationWorkInTheGivenFolder)
{
    addEditor("pwd -P > \"$(dirname \"$0\")/../report\"\n");
    std::filesystem::create_directories(TestingFolder::fileOf(at(L"a folder")));
    EXPECT_TRUE(isOpened(addDocument(L"letter"), at(L"a folder")));
    EXPECT_EQ(textOf(L"report"), std::filesystem::canonical(TestingFolder::fileOf(at(L"a folder"))).string() + '\n');
}

TEST_F(OpeningADocument, isRefusedWithoutAnAssociation)
{
    desktop_.addApplication("editor", "sh %f");
    EXPECT_FALSE(isOpened(addDocument(L"letter")));
    EXPECT_EQ(found(at(L"letter")), 31);
    EXPECT_EQ(executable_, L"");
}

TEST_F(OpeningADocument, isRefusedWithoutItsProgram)
{
    desktop_.addApplication("editor", "/no/such/program %f");
    desktop_.makeDefault("editor");
    EXPECT_FALSE(isOpened(addDocument(L"letter")));
    EXPECT_EQ(found(at(L"letter")), 31);
}

TEST_F(OpeningADocument, isRefusedForWhatIsNoFile)
{
    addEditor("true\n");
    addDocument(L"letter");
    for (const std::wstring& file : {std::wstring(), at(L"missing"), at(L""), folder_.path(),
                                     std::wstring(L"/dev/null"), at(L"letter") + L'\0' + L"x"})
    {
        EXPECT_FALSE(isOpened(file)) << Platform::toUtf8(file);
        EXPECT_EQ(found(file), 2);
        EXPECT_EQ(executable_, L"");
    }
}

TEST_F(OpeningADocument, isRefusedWhenTheGivenFolderIsMissing)
{
    addEditor("true\n");
    Platform::ShellExecution opening = execution(addDocument(L"letter"), at(L"missing"));
    EXPECT_FALSE(shell_.execute(opening));
    EXPECT_EQ(opening.process, nullptr);
}

TEST_F(OpeningADocument, tellsBeforeWhichProgramItWillBe)
{
    addEditor("true\n");
    EXPECT_EQ(found(addDocument(L"letter")), 42);
    EXPECT_EQ(TestingFolder::fileOf(executable_),
              std::filesystem::canonical(TestingFolder::fileOf(at(L"desktop/editor.sh"))));
}

TEST_F(OpeningADocument, tellsOfTheProgramBehindLinks)
{
    const std::string script = desktop_.addScript("editor.sh", "true\n");
    std::filesystem::create_symlink(script, script + ".link");
    desktop_.addApplication("editor", script + ".link %f");
    desktop_.makeDefault("editor");
    EXPECT_EQ(found(addDocument(L"letter")), 42);
    EXPECT_EQ(TestingFolder::fileOf(executable_), std::filesystem::canonical(script));
}

TEST_F(OpeningADocument, tellsOfNoProgramWhosePathIsTooLong)
{
    const std::string script = desktop_.addScript(std::string(230, 'x'), "true\n");
    ASSERT_GE(script.size(), 260u);
    desktop_.addApplication("editor", script + " %f");
    desktop_.makeDefault("editor");
    EXPECT_EQ(found(addDocument(L"letter")), 31);
    EXPECT_EQ(executable_, L"");
}

TEST_F(OpeningADocument, doesNotWaitForTheApplication)
{
    addEditor("while [ ! -e \"$(dirname \"$0\")/../end\" ]; do sleep 0.01; done\n");
    Platform::ShellExecution opening = execution(addDocument(L"letter"), {});
    ASSERT_TRUE(shell_.execute(opening));
    EXPECT_EQ(handles_.wait(opening.process, 0, false), Platform::WaitTimedOut);
    TestingFolder::write(at(L"end"), "");
    EXPECT_EQ(handles_.wait(opening.process, Patience, false), Platform::WaitSignalled);
    EXPECT_TRUE(handles_.close(opening.process));
}
