#include "vaultcore/encryptor.h"

#include "interfaces/release_ptr.h"
#include "interfaces/vaultcore/exception.h"
#include "vaultcore/decryptor.h"
#include "vaultcore/factory.h"
#include "vaultcore/job_testing.h"

#include <future>
#include <thread>

// The whole way through the factory's objects, on the engine's own threads.

namespace VaultCore
{
namespace
{

template <class Worker> void waitForTheEnd(Worker& worker)
{
    while (!worker.IsFinished())
        std::this_thread::yield();
}

class EncryptorTest : public ContentJobTest
{
protected:
    EncryptorTest()
    {
        for (IOperationEvents* events :
             {encryptionEvents.get(), static_cast<IOperationEvents*>(decryptionEvents.get())})
        {
            events->SetFileListBuilderEvents(&recorder);
            events->SetOverallProgressEvents(&recorder);
            events->SetFileProgressEvents(&recorder);
            events->SetFileConflictEvents(&recorder);
        }
        decryptionEvents->SetPasswordProvider(&provider);
        options->SetAlgorithm(3);
    }

    void setKey(char letter)
    {
        const std::unique_ptr<Key> key = testKey(letter);
        options->SetKey(key.get());
    }

    ReleasePtr<IFactory> factory{new Factory};
    ReleasePtr<IFileList> list{factory->CreateFileList()};
    ReleasePtr<IEncryptionOptions> options{factory->CreateEncryptionOptions()};
    ReleasePtr<IDecryptionOptions> decryptionOptions{factory->CreateDecryptionOptions()};
    ReleasePtr<IOperationEvents> encryptionEvents{factory->CreateOperationEvents()};
    ReleasePtr<IDecryptionEvents> decryptionEvents{factory->CreateDecryptionEvents()};
    ReleasePtr<IEncryptor> encryptor{factory->CreateEncryptor()};
    ReleasePtr<IDecryptor> decryptor{factory->CreateDecryptor()};
};

TEST_F(EncryptorTest, encryptsAndDecryptsWithAPassword)
{
    const fs::path source = put(inside / "a.txt", "some text");
    list->Add(wide(source).c_str());
    {
        const ReleasePtr<IKey> key(factory->CreatePasswordKey(L"sesam \u00e4"));
        options->SetKey(key.get());
    }
    options->SetRiddle(L"open \u00e4");
    options->SetExtraText(L"inside");
    options->SetDestiny(DestinyDelete);
    encryptor->Start(list.get(), options.get(), encryptionEvents.get());
    waitForTheEnd(*encryptor);
    ASSERT_FALSE(fs::exists(source));
    EXPECT_NE(content(withEnding(source)).find("open \xc3\xa4"), std::string::npos);
    EXPECT_EQ(content(withEnding(source)).find("inside"), std::string::npos);

    provider.answer = [&](IKey** key)
    {
        *key = factory->CreatePasswordKey(provider.asked.size() == 1 ? L"wrong" : L"sesam \u00e4");
        return KeyProvided;
    };
    const ReleasePtr<IFileList> encrypted(factory->CreateFileList());
    encrypted->Add(wide(withEnding(source)).c_str());
    decryptionOptions->SetMode(7);
    decryptionOptions->SetPath(wide(outside).c_str());
    decryptor->Start(encrypted.get(), decryptionOptions.get(), decryptionEvents.get());
    waitForTheEnd(*decryptor);
    EXPECT_EQ(content(outside / "a.txt"), "some text");
    EXPECT_EQ(provider.asked.size(), 2U);
    EXPECT_EQ(countIn(inside), 0U);
}

TEST_F(EncryptorTest, startReturnsWhileTheJobIsAtWorkAndIsFinishedFollowsTheLastCallback)
{
    std::promise<void> go;
    std::future<void> gate = go.get_future();
    recorder.entryAnswer = [&](std::uint32_t)
    {
        gate.wait();
        return 1;
    };
    list->Add(wide(put(inside / "a.txt", "abc")).c_str());
    setKey('k');
    encryptor->Start(list.get(), options.get(), encryptionEvents.get());
    EXPECT_FALSE(encryptor->IsFinished());
    // Later changes do not reach the job.
    setKey('x');
    options->SetDestiny(DestinyDelete);
    go.set_value();
    waitForTheEnd(*encryptor);
    EXPECT_EQ(recorder.log.back(), L"operation finished");
    EXPECT_TRUE(fs::exists(inside / "a.txt"));
    provider.give("k");
    decrypt({inside / "a.txt.zel"}, false, base);
    EXPECT_EQ(content(base / "a.txt"), "abc");
}

TEST_F(EncryptorTest, releaseWaitsForTheEnd)
{
    list->Add(wide(put(inside / "a.txt", "abc")).c_str());
    setKey('k');
    encryptor->Start(list.get(), options.get(), encryptionEvents.get());
    encryptor.reset();
    EXPECT_EQ(recorder.log.back(), L"operation finished");
}

TEST_F(EncryptorTest, refusesWhatItCannotStartWith)
{
    EXPECT_THROW(encryptor->Start(list.get(), options.get(), encryptionEvents.get()), Exception); // no key
    setKey('k');
    EXPECT_THROW(encryptor->Start(nullptr, options.get(), encryptionEvents.get()), Exception);
    EXPECT_THROW(encryptor->Start(list.get(), nullptr, encryptionEvents.get()), Exception);
    EXPECT_THROW(encryptor->Start(list.get(), options.get(), nullptr), Exception);
    encryptor->Start(list.get(), options.get(), encryptionEvents.get());
    EXPECT_THROW(encryptor->Start(list.get(), options.get(), encryptionEvents.get()), Exception);
    EXPECT_THROW(encryptor->StartSfx(list.get(), nullptr, encryptionEvents.get()), Exception);
}

TEST_F(EncryptorTest, refusesAForeignKeyAndOneThatOnlyDecrypts)
{
    EXPECT_THROW(options->SetKey(nullptr), Exception);
    KeyMaterial material;
    material.type = KeyTypePrivateRsa;
    const auto key = createKey(std::move(material));
    try
    {
        options->SetKey(key.get());
        FAIL() << "no exception";
    }
    catch (const Exception& exception)
    {
        EXPECT_STREQ(exception.GetText(), L"A private key only decrypts; encrypting needs the public one.");
    }
}

TEST_F(EncryptorTest, decryptorRefusesWhatItCannotStartWith)
{
    EXPECT_THROW(decryptor->Start(nullptr, decryptionOptions.get(), decryptionEvents.get()), Exception);
    EXPECT_THROW(decryptor->Start(list.get(), nullptr, decryptionEvents.get()), Exception);
    EXPECT_THROW(decryptor->Start(list.get(), decryptionOptions.get(), nullptr), Exception);
    decryptor->Start(list.get(), decryptionOptions.get(), decryptionEvents.get());
    EXPECT_THROW(decryptor->Start(list.get(), decryptionOptions.get(), decryptionEvents.get()), Exception);
}

TEST_F(EncryptorTest, decryptionOptionsGiveTheirModeBack)
{
    EXPECT_EQ(decryptionOptions->GetMode(), 0);
    decryptionOptions->SetMode(7);
    EXPECT_EQ(decryptionOptions->GetMode(), 7);
}

TEST_F(EncryptorTest, anEmptyListRunsFromStartToEnd)
{
    setKey('k');
    encryptor->Start(list.get(), options.get(), encryptionEvents.get());
    waitForTheEnd(*encryptor);
    decryptor->Start(list.get(), decryptionOptions.get(), decryptionEvents.get());
    waitForTheEnd(*decryptor);
    EXPECT_EQ(recorder.log, (Log{L"operation started", L"built 0 0", L"operation finished", L"operation started",
                                 L"built 0 0", L"operation finished"}));
    EXPECT_TRUE(provider.asked.empty());
}

} // namespace
} // namespace VaultCore
