#include "commands/watcher/document_folder.h"

#include "fakes/fake_platform.h"

#include <gtest/gtest.h>

using namespace Fakes;
using namespace JobRunner;

namespace
{

using Calls = std::vector<std::wstring>;

const wchar_t* const Document = L"C:\\Docs\\report.txt";

class ADocumentFolder : public testing::Test
{
protected:
    ADocumentFolder() { platform.files.files[Document] = {}; }

    bool isAloneBeside(const std::wstring& name, bool isFolder = false)
    {
        const std::wstring path = L"C:\\Docs\\" + name;
        platform.files.files[path].isFolder = isFolder;
        const bool alone = IsDocumentAlone(Document);
        platform.files.files.erase(path);
        return alone;
    }

    FakePlatform platform;
};

TEST_F(ADocumentFolder, holdsTheDocumentAlone)
{
    EXPECT_TRUE(IsDocumentAlone(Document));
    EXPECT_EQ(platform.log.calls(), (Calls{L"findFirst C:\\Docs\\report.txt", L"findClose search",
                                           L"findFirst C:\\Docs\\*", L"findClose search"}));
    EXPECT_TRUE(platform.handles.open().empty());
}

TEST_F(ADocumentFolder, holdsSomethingElse)
{
    EXPECT_FALSE(isAloneBeside(L"report.txt.zel"));
    EXPECT_FALSE(isAloneBeside(L"a"));
    EXPECT_FALSE(isAloneBeside(L".hidden"));
}

TEST_F(ADocumentFolder, mayHoldTheWorkFilesOfApplications)
{
    EXPECT_TRUE(isAloneBeside(L"report.tmp"));
    EXPECT_TRUE(isAloneBeside(L"REPORT.BAK"));
    EXPECT_TRUE(isAloneBeside(L"~report.txt"));
    EXPECT_TRUE(isAloneBeside(L"~$port.docx"));
    EXPECT_FALSE(isAloneBeside(L"~report"));
    EXPECT_FALSE(isAloneBeside(L"report.tmp2"));
    EXPECT_FALSE(isAloneBeside(L".~lock.report.txt#"));
}

TEST_F(ADocumentFolder, withAFolderInItDoesNotHoldTheDocumentAlone)
{
    EXPECT_FALSE(isAloneBeside(L"Pictures", true));
    EXPECT_TRUE(isAloneBeside(L"Pictures.tmp", true));
}

TEST_F(ADocumentFolder, withAFolderInPlaceOfTheDocumentHoldsOneThingAndNoDocument)
{
    platform.files.files[Document].isFolder = true;
    EXPECT_FALSE(IsDocumentAlone(Document));
}

TEST_F(ADocumentFolder, withoutTheDocumentIsNotLookedAt)
{
    platform.files.files.clear();
    platform.files.files[L"C:\\Docs\\other.txt"] = {};
    EXPECT_FALSE(IsDocumentAlone(Document));
    EXPECT_EQ(platform.log.calls(), (Calls{L"findFirst C:\\Docs\\report.txt"}));
}

TEST_F(ADocumentFolder, thatCannotBeListedDoesNotHoldTheDocumentAlone)
{
    // Found by its name, in no folder that "*" could list.
    platform.files.unlistedFolders = true;
    EXPECT_FALSE(IsDocumentAlone(Document));
    EXPECT_EQ(platform.log.calls().back(), L"findFirst C:\\Docs\\*");
}

TEST_F(ADocumentFolder, countsEveryDocumentThatTheNameMatches)
{
    platform.files.files = {{L"C:\\Docs\\a1.txt", {}}, {L"C:\\Docs\\a2.txt", {}}};
    EXPECT_TRUE(IsDocumentAlone(L"C:\\Docs\\a?.txt"));
    EXPECT_FALSE(IsDocumentAlone(L"C:\\Docs\\a1.txt"));
}

TEST_F(ADocumentFolder, ofADocumentThatIsNamedLikeAWorkFileIsOneShort)
{
    platform.files.files = {{L"C:\\Docs\\report.tmp", {}}};
    EXPECT_FALSE(IsDocumentAlone(L"C:\\Docs\\report.tmp"));
}

TEST_F(ADocumentFolder, mayBeNone)
{
    platform.files.files = {{L"report.txt", {}}};
    EXPECT_TRUE(IsDocumentAlone(L"report.txt"));
    EXPECT_EQ(platform.log.callsOf(L"findFirst"), (Calls{L"findFirst report.txt", L"findFirst *"}));
}

TEST_F(ADocumentFolder, makesNoWorkFile)
{
    EXPECT_TRUE(IsWorkFile(L"C:\\Docs\\~a.txt"));
    EXPECT_FALSE(IsWorkFile(L"C:\\~Docs.x\\a.txt"));
    EXPECT_FALSE(IsWorkFile(L"C:\\Docs.tmp\\a.txt"));
    EXPECT_TRUE(IsWorkFile(L".tmp"));
    EXPECT_TRUE(IsWorkFile(L".bak"));
    EXPECT_FALSE(IsWorkFile(L""));
}

} // namespace
