#include "applications/association.h"
#include "commands/dc_open_sub_command.h"
#include "platform/threads.h"
#include "whole_jobs/double_click_step.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <future>

// The steps of a double click one behind the other, with the real engine, the real shell and a real application: a
// document is decrypted, opened, changed or not, and encrypted again or wiped.

namespace fs = std::filesystem;
using namespace EndToEnd;
using namespace JobRunner;

namespace
{

constexpr wchar_t Extension[] = L".jobrunnerstep";
constexpr char Content[] = "Dear reader";
constexpr char More[] = "Dear reader and more";
constexpr wchar_t InTheWay[] = L"A file with the name of the result exists already; it is not replaced.";
constexpr std::chrono::minutes OpenLimit{1};

class ADocumentOfADoubleClick : public AStepOfADoubleClick
{
protected:
    struct Opened
    {
        bool opened;
        bool modified;
        std::uint32_t taken; ///< milliseconds

        bool isModified() const { return opened && modified; }
        bool isNotModified() const { return opened && !modified; }
    };

    ADocumentOfADoubleClick() { take("a [letter] of mine (2).jobrunnerstep"); }

    /// Goes on with a document of this name. It was written long ago.
    void take(const Path& name)
    {
        document = folder.addFile(name, Content);
        fs::last_write_time(document, fs::last_write_time(document) - std::chrono::hours(1));
        locked = encrypted(document);
        files = {document};
    }

    void decryptWithPassword()
    {
        typeNewPassword();
        decryptLocked({0, Password, L""});
    }

    void decryptWithKeyFile()
    {
        chooseKeyFileForEncryption(key("symmetric"));
        decryptLocked({0, L"", key("symmetric").wstring()});
    }

    /// The shell starts the test application with `arguments`, and the wait ends when that has let the document go.
    Opened open(const std::wstring& arguments)
    {
        const Path log = elsewhere.addFile("log.txt", "");
        const Applications::Association association(Extension, arguments + L" --log \"" + log.wstring() + L'"');
        const Opened result = openStep();
        EXPECT_NE(contentOf(log).find("released"), std::string::npos) << contentOf(log);
        return result;
    }

    Opened openUnknown()
    {
        const Applications::Association nothing(Extension);
        return openStep();
    }

    /// The document is wiped without a question, and the encrypted file is as it was.
    void expectWiped()
    {
        DcDeleteSubCommand step(decryption->lastFileText(), &gui, tracker);
        step.Run();
        EXPECT_TRUE(step.succeeded());
        EXPECT_FALSE(fs::exists(document));
        EXPECT_EQ(contentOf(locked), lockedContent);
        EXPECT_EQ(gui.calls().size(), 1U) << "more than the password was asked for";
    }

    /// The document is encrypted again in the place of the file that was there, and wiped.
    void expectEncryptedAgain()
    {
        fs::remove(locked);
        EXPECT_TRUE(encryptStep());
        EXPECT_FALSE(fs::exists(document));
        EXPECT_EQ(algorithmOf(locked), 3);
        EXPECT_EQ(gui.calls().size(), 1U) << "more than the password was asked for";
        decryption.reset();
        session.end();
    }

    std::string lockedContent;
    const SampleFolder elsewhere;

private:
    void decryptLocked(const Fakes::DecryptionAnswer& answer)
    {
        lock();
        ASSERT_FALSE(fs::exists(document));
        lockedContent = contentOf(locked);
        startEngine();
        gui.decryptionAnswers = {answer};
        ASSERT_TRUE(decryptStep().succeeded());
        ASSERT_EQ(Path(decryption->lastFileText()), document);
        ASSERT_EQ(contentOf(document), Content);
    }

    /// On a thread as the job's. Ends the test program when that takes longer than a minute.
    Opened openStep()
    {
        Platform::Threads& threads = Platform::nativeSystem().threads;
        std::promise<Opened> promise;
        auto future = promise.get_future();
        const auto jobThread = threads.start(
            [&]
            {
                threads.enterMultithreadedApartment();
                const std::uint32_t start = threads.tickCount();
                DcOpenSubCommand step(decryption->lastFileText());
                step.Execute();
                promise.set_value({step.WasOpened(), step.WasModified(), threads.tickCount() - start});
            });
        if (future.wait_for(OpenLimit) != std::future_status::ready)
        {
            std::fputs("the document is still being waited for\n", stderr);
            std::_Exit(1);
        }
        jobThread->wait();
        return future.get();
    }
};

/// One that its application writes to while it is open, in the way that the command line says.
class AChangedDocument : public ADocumentOfADoubleClick, public testing::WithParamInterface<const wchar_t*>
{
};

TEST_P(AChangedDocument, isEncryptedAgainWithItsPassword)
{
    decryptWithPassword();
    EXPECT_TRUE(open(GetParam()).isModified());
    EXPECT_EQ(contentOf(document), More);
    expectEncryptedAgain();
    EXPECT_NE(contentOf(locked), lockedContent);
    typePassword();
    decrypt({locked});
    EXPECT_EQ(contentOf(document), More);
}

TEST_P(AChangedDocument, isEncryptedAgainWithItsKeyFile)
{
    decryptWithKeyFile();
    EXPECT_TRUE(open(GetParam()).isModified());
    expectEncryptedAgain();
    chooseKeyFileForDecryption(key("symmetric"));
    decrypt({locked});
    EXPECT_EQ(contentOf(document), More);
}

// Replaced by another file, written to in place, and gone for a while.
INSTANTIATE_TEST_SUITE_P(ByAnApplication, AChangedDocument, testing::Values(L"save 600", L"edit 1200", L"vanish 1500"));

/// One that its application leaves as it is.
class AnUnchangedDocument : public ADocumentOfADoubleClick, public testing::WithParamInterface<const wchar_t*>
{
};

TEST_P(AnUnchangedDocument, isWiped)
{
    decryptWithPassword();
    EXPECT_TRUE(open(GetParam()).isNotModified());
    EXPECT_EQ(contentOf(document), Content);
    EXPECT_TRUE(boxes.boxes().empty());
    expectWiped();
}

// A document that was moved away and back keeps its time.
INSTANTIATE_TEST_SUITE_P(ByAnApplication, AnUnchangedDocument,
                         testing::Values(L"read 1200", L"hold 1200", L"away 1500", L"crash 1200"));

TEST_F(ADocumentOfADoubleClick, isWaitedForWhileItIsMissing)
{
    decryptWithPassword();
    const Opened result = open(L"vanish 2500");
    EXPECT_TRUE(result.isModified());
    EXPECT_GE(result.taken, 3000U) << "two seconds and a half without it, and half a second in which it stays free";
    EXPECT_EQ(contentOf(document), More);
}

// Behind the time in which a lock is looked for, so that nobody waits for another one in its place.
TEST_F(ADocumentOfADoubleClick, thatItsApplicationRemovesCountsAsChangedAndCannotBeEncrypted)
{
    decryptWithPassword();
    EXPECT_TRUE(open(L"remove 5000").isModified());
    EXPECT_FALSE(fs::exists(document));
    gui.fileErrorAnswers = {1};
    EXPECT_FALSE(encryptStep());
    ASSERT_EQ(gui.fileErrors().size(), 1U);
    EXPECT_FALSE(fs::exists(document));
    EXPECT_EQ(contentOf(locked), lockedContent);
}

// The encrypted file lies beside it, so that it is never alone, and a long lock does not end the wait.
TEST_F(ADocumentOfADoubleClick, isWaitedForUntilItsApplicationEndsThoughItHasLetGo)
{
    decryptWithPassword();
    const Opened result = open(L"hold 4200 --stay 1500");
    EXPECT_TRUE(result.isNotModified());
    EXPECT_GE(result.taken, 5700U);
    expectWiped();
}

TEST_F(ADocumentOfADoubleClick, withoutAnApplicationIsToldOfByItsPathAndWiped)
{
    decryptWithPassword();
    const Opened result = openUnknown();
    EXPECT_FALSE(result.opened);
    EXPECT_FALSE(result.modified);
    const std::vector<Fakes::ShownBox> expected{
        {L"Cannot open " + document.wstring() +
             L". Possibly there is no known application associated with this type of file?",
         L"Cannot open decrypted file", 0x40}};
    EXPECT_EQ(boxes.boxes(), expected);
    expectWiped();
}

TEST_F(ADocumentOfADoubleClick, thatMayOnlyBeReadIsOpenedAndWiped)
{
    decryptWithPassword();
    fs::permissions(document, fs::perms::owner_read);
    EXPECT_TRUE(open(L"read 1200").isNotModified());
    EXPECT_EQ(contentOf(document), Content);
    expectWiped();
}

TEST_F(ADocumentOfADoubleClick, thatIsChangedAsksAboutTheEncryptedFileThatIsStillThereAndBothStayWhole)
{
    decryptWithPassword();
    EXPECT_TRUE(open(L"edit 1200").isModified());
    gui.fileErrorAnswers = {1};
    EXPECT_FALSE(encryptStep());
    ASSERT_EQ(gui.fileErrors().size(), 1U);
    EXPECT_EQ(gui.fileErrors()[0].message, InTheWay);
    EXPECT_EQ(contentOf(document), More);
    EXPECT_EQ(contentOf(locked), lockedContent);
    // What was skipped can be encrypted once the other file has gone.
    fs::remove(locked);
    EXPECT_TRUE(encryptStep());
    EXPECT_FALSE(fs::exists(document));
    decryption.reset();
    session.end();
    typePassword();
    decrypt({locked});
    EXPECT_EQ(contentOf(document), More);
}

/// With names that a command line or a search for files could take for something else.
class ADocumentWithAnOddName : public ADocumentOfADoubleClick, public testing::WithParamInterface<const char*>
{
};

TEST_P(ADocumentWithAnOddName, isOpenedChangedAndEncryptedAgain)
{
    take(GetParam());
    decryptWithPassword();
    EXPECT_TRUE(open(L"edit 1200").isModified());
    EXPECT_EQ(contentOf(document), More);
    expectEncryptedAgain();
    typePassword();
    decrypt({locked});
    EXPECT_EQ(contentOf(document), More);
}

INSTANTIATE_TEST_SUITE_P(ByAnApplication, ADocumentWithAnOddName,
                         testing::Values("100% [of] it.jobrunnerstep", "-n 'a' & b; {c}.jobrunnerstep",
                                         "two  spaces.and.dots.jobrunnerstep", "~in work.jobrunnerstep"));

} // namespace
