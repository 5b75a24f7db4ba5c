#include "whole_jobs/double_click_step.h"

#include <filesystem>

// Each step of a double click by itself, with the real engine on real files.

namespace fs = std::filesystem;
using namespace EndToEnd;
using namespace JobRunner;

TEST_F(AStepOfADoubleClick, decryptsBesideTheEncryptedFileWhichStays)
{
    typeNewPassword();
    lock();
    const std::string before = contentOf(locked);
    startEngine();
    gui.decryptionAnswers = {{0, L"open barley", L""}, {0, Password, L""}};
    const DcDecryptSubCommand& step = decryptStep();
    EXPECT_TRUE(step.succeeded());
    EXPECT_EQ(fs::path(step.lastFileText()), document);
    EXPECT_EQ(step.password(), Password);
    EXPECT_FALSE(step.usesKeyFile());
    EXPECT_EQ(contentOf(document), content);
    EXPECT_EQ(contentOf(locked), before);
    EXPECT_EQ(gui.decryptionQuestions().at(0).mode, 2U);
}

TEST_F(AStepOfADoubleClick, encryptsAgainWithThePasswordAsAes256AndWipesTheCopy)
{
    typeNewPassword(
        [](Fakes::EncryptionPasswordRecord& fields)
        {
            fields.algorithm = 14;
            fields.riddle = L"first pet";
        });
    lock();
    EXPECT_EQ(algorithmOf(locked), 14);
    EXPECT_NE(contentOf(locked).find("first pet"), std::string::npos);
    startEngine();
    gui.decryptionAnswers = {{0, Password, L""}};
    decryptStep();
    folder.addFile(document.filename(), changed);
    fs::remove(locked);
    EXPECT_TRUE(encryptStep());
    EXPECT_FALSE(fs::exists(document));
    EXPECT_EQ(algorithmOf(locked), 3);
    EXPECT_EQ(contentOf(locked).find("first pet"), std::string::npos) << "a riddle";
    EXPECT_EQ(gui.calls(), std::vector<std::wstring>{L"gui.showDecryptionPasswordWindow"});
    decryption.reset();
    session.end();
    typePassword();
    decrypt({locked});
    EXPECT_EQ(contentOf(document), changed);
}

TEST_F(AStepOfADoubleClick, encryptsAgainWithTheKeyFile)
{
    const Path own = key("symmetric");
    chooseKeyFileForEncryption(own);
    lock();
    startEngine();
    gui.decryptionAnswers = {{0, L"", own.wstring()}};
    const DcDecryptSubCommand& step = decryptStep();
    EXPECT_TRUE(step.usesKeyFile());
    EXPECT_EQ(step.keyFile(), own.wstring());
    EXPECT_EQ(step.password(), L"");
    folder.addFile(document.filename(), changed);
    fs::remove(locked);
    EXPECT_TRUE(encryptStep());
    EXPECT_FALSE(fs::exists(document));
    decryption.reset();
    session.end();
    chooseKeyFileForDecryption(own);
    decrypt({locked});
    EXPECT_EQ(contentOf(document), changed);
}

TEST_F(AStepOfADoubleClick, thatEncryptsAgainAsksAboutTheEncryptedFileThatIsStillThere)
{
    typeNewPassword();
    lock();
    const std::string before = contentOf(locked);
    startEngine();
    gui.decryptionAnswers = {{0, Password, L""}};
    decryptStep();
    folder.addFile(document.filename(), changed);
    gui.fileErrorAnswers = {1};
    EXPECT_FALSE(encryptStep());
    EXPECT_EQ(gui.fileErrors().at(0).title, L"");
    EXPECT_EQ(gui.fileErrors().at(0).message,
              L"A file with the name of the result exists already; it is not replaced.");
    EXPECT_EQ(contentOf(document), changed) << "what the user has changed is lost";
    EXPECT_EQ(contentOf(locked), before);
    // Once it is out of the way, the step goes on.
    gui.whileFileErrorIsShown = [this] { fs::remove(locked); };
    gui.fileErrorAnswers = {0};
    EXPECT_TRUE(encryptStep());
    EXPECT_FALSE(fs::exists(document));
    EXPECT_EQ(algorithmOf(locked), 3);
}

TEST_F(AStepOfADoubleClick, wipesADocumentWithoutAQuestion)
{
    startEngine();
    DcDeleteSubCommand step(document.wstring(), &gui, tracker);
    step.Run();
    EXPECT_TRUE(step.succeeded());
    EXPECT_FALSE(fs::exists(document));
    EXPECT_EQ(contentOf(folder.path() / "small.txt"), "y");
    EXPECT_TRUE(boxes.boxes().empty());
    EXPECT_TRUE(gui.calls().empty());
    EXPECT_EQ(views.progressViews.back()->operation(), 5);
}

TEST_F(AStepOfADoubleClick, whosePasswordIsGivenUpWritesNothing)
{
    typeNewPassword();
    lock();
    startEngine();
    gui.decryptionAnswers = {{0, L"open barley", L""}, {2, L"", L""}};
    const DcDecryptSubCommand& step = decryptStep();
    EXPECT_FALSE(step.succeeded());
    EXPECT_EQ(step.lastFileText(), L"The operation was cancelled; the file is untouched.");
    EXPECT_FALSE(fs::exists(document));
    EXPECT_TRUE(fs::exists(locked));
}
