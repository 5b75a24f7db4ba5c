#include "platform/posix/default_application.h"

#include "platform/posix/desktop_folders.h"
#include "platform/posix/testing_desktop.h"

using namespace Platform;

namespace
{

class TheDefaultApplication : public testing::Test
{
protected:
    std::string addDocument(const std::wstring& name, const std::string& content = TestingDesktop::Content)
    {
        TestingFolder::write(folder_.path() + L'/' + name, content);
        return toUtf8(folder_.path() + L'/' + name);
    }

    TestingFolder folder_;
    TestingDesktop desktop_{folder_.path() + L"/desktop"};
};

} // namespace

TEST_F(TheDefaultApplication, isTheOneOfTheKindOfTheDocument)
{
    const std::string script = desktop_.addScript("editor.sh", "true\n");
    desktop_.addApplication("editor", script + " --open %f", "Path=/tmp\n");
    desktop_.addApplication("other", "sh %f");
    desktop_.makeDefault("editor");
    const std::string document = addDocument(L"letter.ps");
    const DefaultApplication application = defaultApplicationOf(document);
    EXPECT_EQ(application.program, script);
    EXPECT_EQ(application.arguments, (std::vector<std::string>{script, "--open", document}));
    EXPECT_EQ(application.folder, "/tmp");
}

TEST_F(TheDefaultApplication, isFoundInThePath)
{
    desktop_.addApplication("editor", "sh %f");
    desktop_.makeDefault("editor");
    const DefaultApplication application = defaultApplicationOf(addDocument(L"letter.ps"));
    EXPECT_TRUE(application.program.ends_with("/sh"));
    EXPECT_EQ(application.arguments.front(), "sh");
}

TEST_F(TheDefaultApplication, isFoundWhateverTheNameOfTheDocumentIs)
{
    desktop_.addApplication("editor", "sh %f");
    desktop_.makeDefault("editor");
    for (const std::wstring name :
         {L"with a space", L"[1] 'quoted' \"so\" $(x) `y` \\ ;", L"-n", L"line\nbreak", L"\xDCFF\xDCFE no text", L"*"})
        EXPECT_NE(defaultApplicationOf(addDocument(name)).program, "") << toUtf8(name);
}

TEST_F(TheDefaultApplication, mayHaveBlanksInThePathOfItsProgram)
{
    const std::string script = desktop_.addScript("the editor.sh", "true\n");
    desktop_.addApplication("editor", '"' + script + "\" %f");
    desktop_.makeDefault("editor");
    EXPECT_EQ(defaultApplicationOf(addDocument(L"letter.ps")).program, script);
}

TEST_F(TheDefaultApplication, isTheFirstChosenOneThatIsThere)
{
    desktop_.addApplication("editor", "sh %f");
    desktop_.addApplication("other", "sh -c %f");
    const auto choose = [&](const std::wstring& list, const std::string& ids)
    {
        TestingFolder::write(folder_.path() + L"/desktop/" + list,
                             std::string("[Added Associations]\n") + TestingDesktop::Kind + "=other.desktop\n" +
                                 "[Default Applications]\nimage/png=other.desktop\n" + TestingDesktop::Kind + '=' +
                                 ids + '\n');
    };
    choose(L"config/mimeapps.list", "missing.desktop;");
    choose(L"data/applications/mimeapps.list", "missing.desktop;editor.desktop;other.desktop;");
    EXPECT_EQ(chosenApplicationOf(TestingDesktop::Kind), "editor.desktop");
    setenv("XDG_CURRENT_DESKTOP", "One:TWO", 1);
    choose(L"config/two-mimeapps.list", "other.desktop");
    EXPECT_EQ(chosenApplicationOf(TestingDesktop::Kind), "other.desktop");
    EXPECT_EQ(chosenApplicationOf("image/jpeg"), "");
    unsetenv("XDG_CURRENT_DESKTOP");
}

TEST_F(TheDefaultApplication, isTheOneThatTheToolKnowsWhenNoneWasChosen)
{
    desktop_.addApplication("editor", "sh %f", std::string("MimeType=") + TestingDesktop::Kind + ";\n");
    EXPECT_NE(defaultApplicationOf(addDocument(L"letter.ps")).program, "");
}

TEST_F(TheDefaultApplication, isMissingForAKindThatNobodyOpens)
{
    desktop_.addApplication("editor", "sh %f");
    EXPECT_EQ(defaultApplicationOf(addDocument(L"letter.ps")).program, "");
    desktop_.makeDefault("editor");
    EXPECT_EQ(defaultApplicationOf(addDocument(L"other", std::string("\0\1\2", 3))).program, "");
}

TEST_F(TheDefaultApplication, isMissingWhenItsProgramIs)
{
    desktop_.addApplication("editor", "/no/such/program %f");
    desktop_.makeDefault("editor");
    EXPECT_EQ(defaultApplicationOf(addDocument(L"letter.ps")).program, "");
}

TEST_F(TheDefaultApplication, ofPlainTextOpensOtherTextToo)
{
    desktop_.addApplication("editor", "sh %f");
    TestingFolder::write(folder_.path() + L"/desktop/config/mimeapps.list",
                         "[Default Applications]\ntext/plain=editor.desktop\n");
    EXPECT_NE(defaultApplicationOf(addDocument(L"run.sh", "#!/bin/sh\necho\n")).program, "");
}

TEST_F(TheDefaultApplication, mayStandInAFolderThatItsIdNames)
{
    std::filesystem::create_directories(TestingFolder::fileOf(folder_.path() + L"/desktop/data/applications/suite/of"));
    desktop_.addApplication("suite/of/editor-two", "sh %f");
    const std::string applications = toUtf8(folder_.path()) + "/desktop/data/applications/";
    EXPECT_EQ(desktopFileOf("suite-of-editor.desktop"), "");
    desktop_.addApplication("suite/of/editor", "sh %f");
    EXPECT_EQ(desktopFileOf("suite-of-editor.desktop"), applications + "suite/of/editor.desktop");
    desktop_.addApplication("suite-of-editor", "sh %f");
    EXPECT_EQ(desktopFileOf("suite-of-editor.desktop"), applications + "suite-of-editor.desktop");
    EXPECT_EQ(desktopFileOf("../applications/suite-of-editor.desktop"), "");
    EXPECT_EQ(desktopFileOf(""), "");
}

TEST_F(TheDefaultApplication, isNotChosenByTheWorkingFolder)
{
    const std::string script = desktop_.addScript("planted.sh", "true\n");
    const std::wstring planted = folder_.path() + L"/planted";
    std::filesystem::create_directories(TestingFolder::fileOf(planted + L"/share/applications"));
    TestingFolder::write(planted + L"/share/applications/planted.desktop",
                         "[Desktop Entry]\nType=Application\nExec=" + script + "\n");
    TestingFolder::write(planted + L"/share/mimeapps.list",
                         std::string("[Default Applications]\n") + TestingDesktop::Kind + "=planted.desktop\n");
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(TestingFolder::fileOf(planted));
    for (const std::string folder : {"share", "./share", ".:share"})
    {
        for (const char* name : {"XDG_DATA_HOME", "XDG_DATA_DIRS", "XDG_CONFIG_HOME", "XDG_CONFIG_DIRS"})
            setenv(name, folder.c_str(), 1);
        EXPECT_EQ(chosenApplicationOf(TestingDesktop::Kind), "") << folder;
        EXPECT_EQ(desktopFileOf("planted.desktop"), "") << folder;
    }
    std::filesystem::current_path(before);
}

TEST_F(TheDefaultApplication, doesNotStandOutsideOfTheFoldersOfApplications)
{
    desktop_.addApplication("editor", "sh %f");
    std::filesystem::create_directories(TestingFolder::fileOf(folder_.path() + L"/desktop/data/other"));
    TestingFolder::write(folder_.path() + L"/desktop/data/other/planted.desktop", "[Desktop Entry]\n");
    for (const std::string id : {"..-other-planted.desktop", "suite-..-..-other-planted.desktop", ".-editor.desktop"})
        EXPECT_EQ(desktopFileOf(id), "") << id;
}
