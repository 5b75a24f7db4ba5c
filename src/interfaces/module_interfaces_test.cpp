#include "fakes/fake_documents.h"
#include "fakes/fake_engine.h"
#include "fakes/slot_of.h"
#include "interfaces/release_ptr.h"
#include "interfaces/testing_tables.h"
#include "interfaces/vaultcore/exception.h"
#include "interfaces/vaultcore/factory.h"
#include "interfaces/zelplatform/factory.h"

#include <gtest/gtest.h>

#include <type_traits>

using namespace Fakes;

TEST(TheTableOfTheEngine, hasItsFactoryOperationsInOrder)
{
    using T = VaultCore::IFactory;
    expectSlots(0, &T::Release, &T::notCalled1, &T::CreatePasswordKey, &T::LoadKeyFile, &T::CreateFileList,
                &T::CreateOperationEvents, &T::CreateEncryptionOptions, &T::CreateSfxOptions, &T::CreateEncryptor,
                &T::CreateDecryptionOptions, &T::CreateDecryptionEvents, &T::CreateDecryptor, &T::CreateDeleter,
                &T::CreateDeletionOptions);
}

TEST(TheTableOfTheEngine, hasTheDeletionInOrder)
{
    expectSlots(0, &VaultCore::IDeleter::Release, &VaultCore::IDeleter::Start, &VaultCore::IDeleter::IsFinished);
    expectSlots(0, &VaultCore::IDeletionOptions::Release, &VaultCore::IDeletionOptions::SetMethod);
}

TEST(TheTableOfTheEngine, hasTheEncryptionInOrder)
{
    using Encryptor = VaultCore::IEncryptor;
    expectSlots(0, &Encryptor::Release, &Encryptor::StartSfx, &Encryptor::Start, &Encryptor::IsFinished);
    using T = VaultCore::IEncryptionOptions;
    expectSlots(0, &T::Release, &T::SetAlgorithm, &T::SetKey, &T::SetRiddle, &T::notCalled1, &T::notCalled2,
                &T::SetExtraText, &T::SetDestiny);
}

TEST(TheTableOfTheEngine, hasTheCommentOfAPackageBehindTheOptionsOfAnEncryption)
{
    using T = VaultCore::ISfxOptions;
    expectSlots(0, &T::Release, &T::SetAlgorithm, &T::SetKey, &T::SetRiddle, &T::notCalled1, &T::notCalled2,
                &T::SetExtraText, &T::SetDestiny, &T::SetSfxComment);
}

TEST(TheTableOfTheEngine, hasTheDecryptionInOrder)
{
    using Decryptor = VaultCore::IDecryptor;
    expectSlots(0, &Decryptor::Release, &Decryptor::Start, &Decryptor::IsFinished);
    using Options = VaultCore::IDecryptionOptions;
    expectSlots(0, &Options::Release, &Options::SetPath, &Options::SetMode, &Options::GetMode);
}

TEST(TheTableOfTheEngine, hasKeysAndTheirProviderInOrder)
{
    expectSlots(0, &VaultCore::IKey::Release, &VaultCore::IKey::notCalled1, &VaultCore::IKey::GetKeyType);
    using T = VaultCore::IPasswordProvider;
    expectSlots(0, &T::ProvideKey, &T::GetStoredKey, &T::GetStoredKeyCount, &T::AddStoredKey);
}

TEST(TheTableOfTheEngine, hasTheFileListInOrder)
{
    using T = VaultCore::IFileList;
    expectSlots(0, &T::Release, &T::Add, &T::notCalled1, &T::GetCount, &T::GetItem);
}

TEST(TheTableOfTheEngine, hasTheCollectingObjectsInOrder)
{
    using T = VaultCore::IDecryptionEvents;
    expectSlots(0, &T::Release, &T::SetFileListBuilderEvents, &T::SetOverallProgressEvents, &T::SetFileProgressEvents,
                &T::SetDestinyProgressEvents, &T::SetFileConflictEvents, &T::SetPasswordProvider);
}

TEST(TheTableOfTheEngine, hasTheCallbacksInOrder)
{
    using Overall = VaultCore::IOverallProgressEvents;
    expectSlots(0, &Overall::OnOperationStarted, &Overall::OnFileStarted, &Overall::OnFileFinished,
                &Overall::OnOperationFinished);
    using FileList = VaultCore::IFileListBuilderEvents;
    expectSlots(0, &FileList::OnFileListBuilt, &FileList::OnFileListEntry);
    expectSlots(0, &VaultCore::IFileProgressEvents::OnFileProgress);
    using Conflict = VaultCore::IFileConflictEvents;
    expectSlots(0, &Conflict::OnFileConflict, &Conflict::OnFileError);
}

TEST(TheTableOfTheEngine, hasTheTextOfAFailureBehindTheDestructor)
{
    // A destructor takes two entries with these compilers.
    expectSlots(2, &VaultCore::Exception::GetText);
    EXPECT_STREQ(VaultCore::Exception(L"no such file").GetText(), L"no such file");
}

TEST(TheTableOfTheDocuments, hasFactoryAndStoreInOrder)
{
    using Factory = ZelPlatform::IFactory;
    expectSlots(0, &Factory::Release, &Factory::notCalled1, &Factory::CreateJobDocumentStore);
    using Store = ZelPlatform::IJobDocumentStore;
    expectSlots(0, &Store::Release, &Store::LoadJobDocument, &Store::notCalled1, &Store::SaveSfxComment);
}

TEST(TheTableOfTheDocuments, hasTheKindsInOrder)
{
    using T = ZelPlatform::IJobRunnerDocument;
    expectSlots(0, &T::Release, &T::GetFileList, &T::notCalled1, &T::IsDecryption, &T::IsDoubleClickDecryption,
                &T::IsEncryption, &T::IsSfxEncryption, &T::IsWipe);
}

TEST(TheTableOfTheDocuments, hasAGetterFirstInTheTableOfEachKind)
{
    using Encryptor = ZelPlatform::IEncryptorThreadDocument;
    expectSlots(0, &Encryptor::GetAlgorithm, &Encryptor::notCalled1, &Encryptor::notCalled2, &Encryptor::notCalled3,
                &Encryptor::GetDestiny, &Encryptor::GetExtraText);
    using Sfx = ZelPlatform::IEncryptorSfxThreadDocument;
    expectSlots(0, &Sfx::notCalled1, &Sfx::notCalled2, &Sfx::notCalled3, &Sfx::notCalled4, &Sfx::GetDestiny,
                &Sfx::notCalled5, &Sfx::GetSfxComment);
    using Decryptor = ZelPlatform::IDecryptorThreadDocument;
    expectSlots(0, &Decryptor::GetDecryptionPath, &Decryptor::GetDecryptionMode);
    expectSlots(0, &ZelPlatform::IDeleterThreadDocument::GetDeletionMethod);
}

namespace
{

/// None of these is destroyed through its table.
template <class... Interfaces> void expectNoDestructors()
{
    EXPECT_FALSE((std::has_virtual_destructor_v<Interfaces> || ...));
}

} // namespace

TEST(TheTables, holdNoDestructor)
{
    using namespace VaultCore;
    expectNoDestructors<VaultCore::IFactory, IKey, IFileList, IPasswordProvider>();
    expectNoDestructors<IEncryptor, IEncryptionOptions, ISfxOptions, IDecryptor, IDecryptionOptions, IDeleter,
                        IDeletionOptions>();
    expectNoDestructors<IOperationEvents, IDecryptionEvents, IOverallProgressEvents, IFileListBuilderEvents,
                        IFileProgressEvents, IFileConflictEvents>();
    using namespace ZelPlatform;
    expectNoDestructors<ZelPlatform::IFactory, IJobDocumentStore, IJobRunnerDocument, IEncryptorThreadDocument,
                        IEncryptorSfxThreadDocument, IDecryptorThreadDocument, IDeleterThreadDocument>();
}

TEST(ACallByNumber, reachesEachOperationOfTheFactory)
{
    CallLog log;
    FakeEngine engine(log);
    VaultCore::IFactory* const factory = FakeEngine::createFactory();
    using Factory = VaultCore::IFactory;
    const ReleasePtr<VaultCore::IOperationEvents> events(
        (factory->*memberAt<VaultCore::IOperationEvents* (Factory::*)()>(5))());
    const ReleasePtr<VaultCore::IDeleter> deleter((factory->*memberAt<VaultCore::IDeleter* (Factory::*)()>(12))());
    const ReleasePtr<VaultCore::IDeletionOptions> options(
        (factory->*memberAt<VaultCore::IDeletionOptions* (Factory::*)()>(13))());
    (options.get()->*memberAt<void (VaultCore::IDeletionOptions::*)(std::uint32_t)>(1))(7);
    (factory->*memberAt<void (Factory::*)()>(1))();
    (factory->*memberAt<void (Factory::*)()>(0))();
    const std::vector<std::wstring> expected{L"createFactory",         L"factory.CreateOperationEvents",
                                             L"factory.CreateDeleter", L"factory.CreateDeletionOptions",
                                             L"options.SetMethod(7)",  L"factory.notCalled1",
                                             L"factory.Release"};
    EXPECT_EQ(log.calls(), expected);
}

namespace
{

using Factory = VaultCore::IFactory;

/// What the factory's operation at `slot` gives.
template <class Object> ReleasePtr<Object> made(Factory& factory, std::size_t slot)
{
    return ReleasePtr<Object>((factory.*memberAt<Object* (Factory::*)()>(slot))());
}

ReleasePtr<VaultCore::IKey> keyOf(Factory& factory, std::size_t slot, const wchar_t* text)
{
    return ReleasePtr<VaultCore::IKey>((factory.*memberAt<VaultCore::IKey* (Factory::*)(const wchar_t*)>(slot))(text));
}

} // namespace

TEST(ACallByNumber, reachesKeysAndTheObjectsOfTheEncryptions)
{
    CallLog log;
    FakeEngine engine(log);
    engine.keyFiles[L"k"].type = 3;
    const ReleasePtr<Factory> factory(FakeEngine::createFactory());
    EXPECT_EQ(keyOf(*factory, 2, L"secret")->GetKeyType(), 0);
    const auto key = keyOf(*factory, 3, L"k");
    EXPECT_EQ((key.get()->*memberAt<int (VaultCore::IKey::*)()>(2))(), 3);
    log.clear();
    made<VaultCore::IFileList>(*factory, 4);
    made<VaultCore::IEncryptionOptions>(*factory, 6);
    const auto sfx = made<VaultCore::ISfxOptions>(*factory, 7);
    made<VaultCore::IEncryptor>(*factory, 8);
    made<VaultCore::IDecryptionOptions>(*factory, 9);
    made<VaultCore::IDecryptionEvents>(*factory, 10);
    made<VaultCore::IDecryptor>(*factory, 11);
    EXPECT_EQ(log.callsOf(L"factory."),
              (std::vector<std::wstring>{L"factory.CreateFileList", L"factory.CreateEncryptionOptions",
                                         L"factory.CreateSfxOptions", L"factory.CreateEncryptor",
                                         L"factory.CreateDecryptionOptions", L"factory.CreateDecryptionEvents",
                                         L"factory.CreateDecryptor"}));
    using Sfx = VaultCore::ISfxOptions;
    (sfx.get()->*memberAt<void (Sfx::*)(VaultCore::IKey*)>(2))(key.get());
    (sfx.get()->*memberAt<void (Sfx::*)(std::uint32_t)>(7))(2);
    (sfx.get()->*memberAt<void (Sfx::*)(const wchar_t*)>(8))(L"comment");
    EXPECT_EQ(log.callsOf(L"options.Set"), (std::vector<std::wstring>{L"options.SetKey(k)", L"options.SetDestiny(2)",
                                                                      L"options.SetSfxComment(comment)"}));
}

TEST(ACallByNumber, reachesEachKindOfADocument)
{
    CallLog log;
    const ReleasePtr<ZelPlatform::IJobRunnerDocument> document(new FakeDocument(log, {}));
    using Document = ZelPlatform::IJobRunnerDocument;
    for (std::size_t slot = 3; slot <= 7; ++slot)
        EXPECT_FALSE((document.get()->*memberAt<bool (Document::*)()>(slot))());
    const std::vector<std::wstring> expected{L"document.IsDecryption", L"document.IsDoubleClickDecryption",
                                             L"document.IsEncryption", L"document.IsSfxEncryption", L"document.IsWipe"};
    EXPECT_EQ(log.calls(), expected);
}

TEST(ADocument, isReachedAsEachOfItsKindsByACheckedCastAndReleasedOnce)
{
    CallLog log;
    JobAnswers answers;
    answers.encryption = true;
    answers.wipe = true;
    answers.algorithm = 3;
    answers.deletionMethod = 2;
    ReleasePtr<ZelPlatform::IJobRunnerDocument> document(new FakeDocument(log, answers));
    EXPECT_TRUE(document->IsEncryption());
    EXPECT_TRUE(document->IsWipe());
    EXPECT_EQ(dynamic_cast<ZelPlatform::IEncryptorThreadDocument&>(*document).GetAlgorithm(), 3U);
    EXPECT_EQ(dynamic_cast<ZelPlatform::IDeleterThreadDocument&>(*document).GetDeletionMethod(), 2U);
    document.reset();
    EXPECT_EQ(log.callsOf(L"document.Release").size(), 1U);
}

TEST(ADocument, staysValidWhenItsStoreIsGone)
{
    CallLog log;
    FakeZelPlatform module(log);
    module.documents[L"C:\\Jobs\\a job.cfg"].files = {L"C:\\a.txt"};
    ReleasePtr<ZelPlatform::IFactory> factory(FakeZelPlatform::createFactory());
    ReleasePtr<ZelPlatform::IJobDocumentStore> store(factory->CreateJobDocumentStore());
    EXPECT_EQ(store->LoadJobDocument(L"C:\\other"), nullptr);
    const ReleasePtr<ZelPlatform::IJobRunnerDocument> document(store->LoadJobDocument(L"C:\\Jobs\\a job.cfg"));
    store.reset();
    factory.reset();
    EXPECT_STREQ(document->GetFileList()->GetItem(0), L"C:\\a.txt");
    EXPECT_EQ(document->GetFileList()->GetCount(), 1);
}
