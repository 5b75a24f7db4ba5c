#include "platform/posix/desktop_entry.h"

#include <gtest/gtest.h>

using namespace Platform;

namespace
{

using Arguments = std::vector<std::string>;

Arguments argumentsOf(const std::string& command, const std::string& document = "/home/a letter.txt")
{
    const DesktopEntry entry{"/apps/editor.desktop", "The Editor", "editor-icon", command, {}};
    return commandFor(entry, document).value_or(Arguments{"nothing"});
}

} // namespace

TEST(ADesktopEntry, isReadFromItsMainGroup)
{
    const auto entry = parseDesktopEntry("# a comment\n"
                                         "\n"
                                         "[Other]\nExec=other\n"
                                         "[Desktop Entry]\n"
                                         "Type = Application\r\n"
                                         "Name=The Editor\nName[de]=Der Editor\n"
                                         "Icon=pen\nPath=/home\n"
                                         "Exec=editor --new=1 %f\n"
                                         "[Desktop Action New]\nExec=editor --again\nName=New\n");
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->name, "The Editor");
    EXPECT_EQ(entry->icon, "pen");
    EXPECT_EQ(entry->folder, "/home");
    EXPECT_EQ(entry->command, "editor --new=1 %f");
}

TEST(ADesktopEntry, hasItsEscapesTakenOutBeforeTheCommandIsRead)
{
    const auto entry = parseDesktopEntry("[Desktop Entry]\nType=Application\nExec=editor\\s\"a\\\\\\\\b\" \\x %f\n");
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->command, "editor \"a\\\\b\" \\x %f");
    EXPECT_EQ(*commandFor(*entry, "/d"), (Arguments{"editor", "a\\b", "x", "/d"}));
}

TEST(ADesktopEntry, ofNoApplicationIsNone)
{
    EXPECT_FALSE(parseDesktopEntry(""));
    EXPECT_FALSE(parseDesktopEntry("[Desktop Entry]\nType=Link\nExec=editor\n"));
    EXPECT_FALSE(parseDesktopEntry("[Desktop Entry]\nType=Application\n"));
    EXPECT_FALSE(parseDesktopEntry("[Desktop Entry]\nType=Application\nExec=editor\nHidden=true\n"));
}

TEST(TheCommandOfAnEntry, getsTheDocumentInThePlaceOfItsCode)
{
    for (const std::string code : {"%f", "%F", "%u", "%U"})
        EXPECT_EQ(argumentsOf("editor --open " + code + " --wait"),
                  (Arguments{"editor", "--open", "/home/a letter.txt", "--wait"}))
            << code;
    EXPECT_EQ(argumentsOf("editor --file=%f"), (Arguments{"editor", "--file=/home/a letter.txt"}));
}

TEST(TheCommandOfAnEntry, getsTheDocumentAtItsEndWhenItNamesNoPlace)
{
    EXPECT_EQ(argumentsOf("editor --new"), (Arguments{"editor", "--new", "/home/a letter.txt"}));
}

TEST(TheCommandOfAnEntry, leavesThePathAsItIs)
{
    for (const std::string document :
         {"/a/\"quoted\" '[1]' $HOME `x` \\ %f %% ;&|.txt", "/a/line\nbreak", "/a/-x", "/a/\xFF\xFE not text", "/a/ "})
        EXPECT_EQ(argumentsOf("editor %f", document), (Arguments{"editor", document}));
}

TEST(TheCommandOfAnEntry, getsTheOtherValues)
{
    EXPECT_EQ(argumentsOf("editor %i -n %c -k %k 100%% %f"),
              (Arguments{"editor", "--icon", "editor-icon", "-n", "The Editor", "-k", "/apps/editor.desktop", "100%",
                         "/home/a letter.txt"}));
    EXPECT_EQ(*commandFor({{}, {}, {}, "editor %i %c %f", {}}, "/d"), (Arguments{"editor", "/d"}))
        << "without an icon and a name there is no argument";
}

TEST(TheCommandOfAnEntry, leavesOutCodesThatAreOutOfUse)
{
    EXPECT_EQ(argumentsOf("editor %d %D %n %N %v %m %f"), (Arguments{"editor", "/home/a letter.txt"}));
}

TEST(TheCommandOfAnEntry, isPartedAtBlanksOutsideOfQuotes)
{
    EXPECT_EQ(argumentsOf("\"/opt/the editor\"  --title=\"a \\\"b\\\" \\$c \\`d\\` \\\\e\"\t\"\" %f"),
              (Arguments{"/opt/the editor", "--title=a \"b\" $c `d` \\e", "", "/home/a letter.txt"}));
}

TEST(TheCommandOfAnEntry, isNotUsedWhenItCannotBeUnderstood)
{
    for (const std::string command : {"editor %x", "editor %", "editor \"open", "", "  "})
        EXPECT_EQ(argumentsOf(command), Arguments{"nothing"}) << command;
}

TEST(TheCommandOfAnEntry, givesNoShellANameToRun)
{
    for (const std::string command :
         {"sh -c \"editor '%f'\"", "sh -c \"exec editor %U\"", "sh -c 'editor '\"%f;\"", "editor \"--file=%f\"",
          "%f \"%f;\"", "sh -c \"editor %\"f", "sh -c \"editor %%%f\""})
        EXPECT_EQ(argumentsOf(command, "/a/';touch run;'"), Arguments{"nothing"}) << command;
    EXPECT_EQ(argumentsOf("editor \"at 100%%\" %f"), (Arguments{"editor", "at 100%", "/home/a letter.txt"}));
    EXPECT_EQ(argumentsOf("editor \"%f\""), (Arguments{"editor", "/home/a letter.txt"}));
    EXPECT_EQ(argumentsOf("sh -c \"editor \\\"$1\\\"\" editor %f"),
              (Arguments{"sh", "-c", "editor \"$1\"", "editor", "/home/a letter.txt"}));
}
