#include "zelplatform/module_factory.h"

#include "interfaces/release_ptr.h"
#include "interfaces/vaultcore/file_list.h"
#include "zelplatform/files.h"
#include "zelplatform/job_file.h"
#include "zelplatform/scratch_folder.h"

namespace ZelPlatform
{
namespace
{

using DocumentPtr = ReleasePtr<IJobRunnerDocument>;

class Documents : public ScratchFolder
{
protected:
    SfxComment userComment() const { return SfxComment(file("comment").wstring()); }

    ReleasePtr<IJobDocumentStore> store() const
    {
        const ReleasePtr<IFactory> factory(createModuleFactory(userComment()));
        return ReleasePtr<IJobDocumentStore>(factory->CreateJobDocumentStore());
    }

    /// The document of a job file; its store and the file are gone by then.
    DocumentPtr load(std::string_view text) const
    {
        write(file("job"), text);
        DocumentPtr document(store()->LoadJobDocument(file("job").wstring().c_str()));
        std::filesystem::remove(file("job"));
        return document;
    }

    DocumentPtr loadKind(const std::string& kind, const std::string& fields = "") const
    {
        return load(R"({"files": ["first", "second*"], "kind": ")" + kind + "\"" + fields + "}");
    }
};

/// The answers in the order of the process's questions, then the interfaces in the same order.
std::string kindsOf(IJobRunnerDocument* document)
{
    std::string kinds;
    const auto add = [&kinds](bool answer) { kinds += answer ? '1' : '0'; };
    add(document->IsEncryption());
    add(document->IsSfxEncryption());
    add(document->IsDecryption());
    add(document->IsDoubleClickDecryption());
    add(document->IsWipe());
    kinds += ' ';
    add(dynamic_cast<IEncryptorThreadDocument*>(document));
    add(dynamic_cast<IEncryptorSfxThreadDocument*>(document));
    add(dynamic_cast<IDecryptorThreadDocument*>(document));
    add(dynamic_cast<IDeleterThreadDocument*>(document));
    return kinds;
}

TEST_F(Documents, haveTheInterfaceOfTheirKindAlone)
{
    EXPECT_EQ(kindsOf(loadKind("encrypt").get()), "10000 1000");
    EXPECT_EQ(kindsOf(loadKind("encrypt-sfx").get()), "01000 0100");
    EXPECT_EQ(kindsOf(loadKind("decrypt").get()), "00100 0010");
    EXPECT_EQ(kindsOf(loadKind("double-click").get()), "00010 0000");
    EXPECT_EQ(kindsOf(loadKind("delete").get()), "00001 0001");
}

TEST_F(Documents, ofAnUnknownKindAnswerNoToAll)
{
    EXPECT_EQ(kindsOf(loadKind("shred").get()), "00000 0000");
}

TEST_F(Documents, giveTheirFiles)
{
    for (const char* kind : {"encrypt", "encrypt-sfx", "decrypt", "double-click", "delete", "shred"})
    {
        const DocumentPtr document = loadKind(kind);
        VaultCore::IFileList* files = document->GetFileList();
        ASSERT_EQ(files->GetCount(), 2);
        EXPECT_STREQ(files->GetItem(0), L"first");
        EXPECT_STREQ(files->GetItem(1), L"second*");
        EXPECT_EQ(files, document->GetFileList());
    }
}

TEST_F(Documents, giveNoFileOutsideTheirList)
{
    const DocumentPtr document = loadKind("delete");
    EXPECT_EQ(document->GetFileList()->GetItem(-1), nullptr);
    EXPECT_EQ(document->GetFileList()->GetItem(2), nullptr);
}

TEST_F(Documents, keepTheirTextsInPlaceWhileTheListGrows)
{
    const DocumentPtr document = loadKind("delete");
    VaultCore::IFileList* files = document->GetFileList();
    const wchar_t* first = files->GetItem(0);
    for (int count = 0; count < 10'000; ++count)
        files->Add(L"more");
    files->Release();
    EXPECT_EQ(files->GetItem(0), first);
    EXPECT_STREQ(first, L"first");
    EXPECT_EQ(files->GetCount(), 10'002);
}

TEST_F(Documents, tellAnEncryption)
{
    const DocumentPtr document = loadKind("encrypt", R"(, "algorithm": 7, "destiny": 2, "extraText": "free")");
    auto* encryption = dynamic_cast<IEncryptorThreadDocument*>(document.get());
    ASSERT_TRUE(encryption);
    EXPECT_EQ(encryption->GetAlgorithm(), 7U);
    EXPECT_EQ(encryption->GetDestiny(), 2U);
    EXPECT_STREQ(encryption->GetExtraText(), L"free");
    EXPECT_EQ(encryption->GetExtraText(), encryption->GetExtraText());
}

TEST_F(Documents, tellADecryption)
{
    const DocumentPtr document = loadKind("decrypt", R"(, "path": "out", "mode": 5)");
    auto* decryption = dynamic_cast<IDecryptorThreadDocument*>(document.get());
    ASSERT_TRUE(decryption);
    EXPECT_STREQ(decryption->GetDecryptionPath(), L"out");
    EXPECT_EQ(decryption->GetDecryptionMode(), 5U);
}

TEST_F(Documents, tellADecryptionWithoutAFolderByNull)
{
    for (const char* fields : {"", R"(, "path": null)"})
    {
        const DocumentPtr document = loadKind("decrypt", fields);
        EXPECT_EQ(dynamic_cast<IDecryptorThreadDocument*>(document.get())->GetDecryptionPath(), nullptr);
    }
}

TEST_F(Documents, tellADeletion)
{
    for (const std::uint32_t method : {0U, 1U, 2U, 7U})
    {
        const DocumentPtr document = loadKind("delete", ", \"method\": " + std::to_string(method));
        EXPECT_EQ(dynamic_cast<IDeleterThreadDocument*>(document.get())->GetDeletionMethod(), method);
    }
}

TEST_F(Documents, tellTheirOwnComment)
{
    store()->SaveSfxComment(L"the user's");
    for (const std::string text : {"the job's", ""})
    {
        const DocumentPtr document = loadKind("encrypt-sfx", R"(, "destiny": 1, "comment": ")" + text + "\"");
        auto* encryption = dynamic_cast<IEncryptorSfxThreadDocument*>(document.get());
        ASSERT_TRUE(encryption);
        EXPECT_EQ(encryption->GetDestiny(), 1U);
        EXPECT_EQ(encryption->GetSfxComment(), std::wstring(text.begin(), text.end()));
    }
}

TEST_F(Documents, tellTheUsersCommentOtherwise)
{
    const DocumentPtr document = loadKind("encrypt-sfx");
    auto* encryption = dynamic_cast<IEncryptorSfxThreadDocument*>(document.get());
    ASSERT_TRUE(encryption);
    EXPECT_EQ(encryption->GetSfxComment(), builtInSfxComment());
    store()->SaveSfxComment(L"the user's");
    EXPECT_EQ(encryption->GetSfxComment(), L"the user's");
}

TEST_F(Documents, doNotComeFromABadPath)
{
    const auto documents = store();
    EXPECT_EQ(documents->LoadJobDocument(nullptr), nullptr);
    EXPECT_EQ(documents->LoadJobDocument(L""), nullptr);
    EXPECT_EQ(documents->LoadJobDocument(file("missing").wstring().c_str()), nullptr);
    EXPECT_EQ(documents->LoadJobDocument(file("").wstring().c_str()), nullptr);
    documents->SaveSfxComment(nullptr);
}

TEST_F(Documents, doNotComeFromABadFile)
{
    EXPECT_FALSE(load(""));
    EXPECT_FALSE(load("not a job"));
    EXPECT_FALSE(load(R"({"kind": "encrypt"})"));
}

TEST_F(Documents, comeFromAFileOfTheLargestSizeAndNoLarger)
{
    std::string text = R"({"kind": "delete", "files": []})";
    text.resize(MaximumJobFileBytes, ' ');
    EXPECT_TRUE(load(text));
    text += ' ';
    EXPECT_FALSE(load(text));
}

TEST_F(Documents, comeFromPathsBeyondTheClassicLimit)
{
    const std::filesystem::path path = longPath();
    ASSERT_TRUE(replacePrivateFile(path.wstring(), R"({"kind": "delete", "files": []})"));
    EXPECT_TRUE(DocumentPtr(store()->LoadJobDocument(path.wstring().c_str())));
}

} // namespace
} // namespace ZelPlatform
