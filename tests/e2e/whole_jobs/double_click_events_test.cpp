#include "scenarios/wordless_engine.h"
#include "whole_jobs/whole_job.h"

#include <filesystem>

// What a double click does and tells from its job file to its end, with an engine that tells where the result is, and
// with one that does not.

namespace fs = std::filesystem;
using namespace EndToEnd;

namespace
{

const wchar_t* const CannotOpen =
    L"Cannot open . Possibly there is no known application associated with this type of file?";

/// Up to the end of the decrypt step; `between` is what is told while the engine works.
std::string untilTheDecryption(const std::string& processed, const std::string& failed, const std::string& megabytes,
                               const std::string& between = "")
{
    return R"(
TrackView(jobrunner, JobRunner.exe)
TrackViewEvent(start_module, , none)
TrackViewEvent(jobrunner, getxml_set_operation_dblclk_decryption, none)
TrackView(jobrunner/dblclk, Double Click File Thread (JobRunner))
TrackView(jobrunner/dblclk/decrypt, Decrypt (DblClk in JobRunner))
TrackViewEvent(execute, , none)
TrackView(jobrunner/decryption, Decryption Thread (JobRunner)))" +
           between + R"(
TrackEvent(winzel decryption usage statistics, processed_file_count, , )" +
           processed + R"()
TrackEvent(winzel decryption usage statistics, failed_file_count, , )" +
           failed + R"()
TrackEvent(winzel decryption usage statistics, processed_total_size_mb, , )" +
           megabytes + ")\n";
}

const std::string NotSucceeded = "TrackViewEvent(not_succeeded, , none)\n";

/// Of a document without a name, which the user skips.
std::string openAndClean(const std::string& credential)
{
    return "TrackViewEvent(succeeded, , none)\nTrackViewEvent(" + credential + R"(, , none)
TrackView(jobrunner/dblclk/openandwait, Open and Wait (DblClk in JobRunner))
TrackViewEvent(execute, , none)
TrackViewEvent(not_succeeded, , none)
TrackView(jobrunner/dblclk/clean, Clean (DblClk in JobRunner))
TrackViewEvent(execute, , none)
TrackView(jobrunner/wipe, Wipe Thread (JobRunner))
TrackViewEvent(err_file_error, The entry does not name a file or folder that can be removed., none)
TrackViewEvent(set_user_action_skip, , none)
TrackEvent(winzel wipe usage statistics, use_op_wipe, , none)
TrackEvent(winzel wipe usage statistics, processed_file_count, , 0)
TrackEvent(winzel wipe usage statistics, failed_file_count, , 1)
TrackEvent(winzel wipe usage statistics, processed_total_size_mb, , 0)
TrackViewEvent(not_succeeded, , none)
)";
}

} // namespace

class EventsOfADoubleClick : public WholeJob
{
protected:
    EventsOfADoubleClick()
    {
        shell.onExecute = [this](Platform::ShellExecution& execution)
        {
            opened.push_back(execution.file);
            return false;
        };
    }

    std::string doubleClick(const Path& file, int exitCode = 0)
    {
        return run(folder.addJob("double-click", {file}), exitCode);
    }

    /// The large file, encrypted with the password; the file itself is gone.
    Path lockedFile()
    {
        typeNewPassword();
        run(folder.addJob("encrypt", {files[0]}, "\"destiny\": 1"));
        EXPECT_FALSE(fs::exists(files[0]));
        return encrypted(files[0]);
    }

    std::vector<std::wstring> opened; ///< what the shell was asked to open
    const std::string content = contentOf(files[0]);
};

TEST_F(EventsOfADoubleClick, endBehindTheDecryptionWithBothFilesWhole)
{
    const Path locked = lockedFile();
    const std::string before = contentOf(locked);
    typePassword();
    EXPECT_EQ(doubleClick(locked), untilTheDecryption("1", "0", "3") + NotSucceeded);
    EXPECT_EQ(contentOf(files[0]), content);
    EXPECT_EQ(contentOf(locked), before);
    EXPECT_TRUE(opened.empty());
    EXPECT_TRUE(boxes.boxes().empty());
}

TEST_F(EventsOfADoubleClick, areTheSameWithAKeyFile)
{
    chooseKeyFileForEncryption(key("symmetric"));
    encrypt("\"destiny\": 1");
    chooseKeyFileForDecryption(key("symmetric"));
    EXPECT_EQ(doubleClick(encrypted(files[0])), untilTheDecryption("1", "0", "3") + NotSucceeded);
    EXPECT_EQ(contentOf(files[0]), content);
}

TEST_F(EventsOfADoubleClick, areTheSameForAPackage)
{
    fs::remove(files[1]);
    typeNewPassword();
    run(folder.addJob("encrypt-sfx", {files[0]}, "\"destiny\": 1"));
    const Path package = Path(files[0]) += ".exe";
    ASSERT_TRUE(fs::exists(package));
    // Counted by its own bytes, with the program in it.
    const std::string megabytes = std::to_string(fs::file_size(package) >> 20);
    typePassword();
    EXPECT_EQ(doubleClick(package), untilTheDecryption("1", "0", megabytes) + NotSucceeded);
    EXPECT_EQ(contentOf(files[0]), content);
    EXPECT_TRUE(fs::exists(package));
    EXPECT_TRUE(opened.empty());
}

TEST_F(EventsOfADoubleClick, goOnWithAnEmptyNameWhenTheEngineTellsNoPath)
{
    const Path locked = lockedFile();
    const std::string before = contentOf(locked);
    modules.replaceEngine = withoutWords;
    views.fileErrorAnswers = {1};
    std::wstring toldBefore;
    boxes.whileShown = [&] { toldBefore = tracker->calls().back(); };
    typePassword();
    EXPECT_EQ(doubleClick(locked), untilTheDecryption("1", "0", "3") + openAndClean("used_password"));
    EXPECT_EQ(boxes.boxes(), (std::vector<Fakes::ShownBox>{{CannotOpen, L"Cannot open decrypted file", 0x40}}));
    EXPECT_EQ(toldBefore, L"TrackViewEvent(execute, , none)");
    EXPECT_EQ(opened, std::vector<std::wstring>{L""});
    // Nothing of the user's is lost.
    EXPECT_EQ(contentOf(files[0]), content);
    EXPECT_EQ(contentOf(locked), before);
    EXPECT_EQ(contentOf(files[1]), "y");
}

TEST_F(EventsOfADoubleClick, nameTheKeyFileWhenTheEngineTellsNoPath)
{
    chooseKeyFileForEncryption(key("symmetric"));
    encrypt("\"destiny\": 1");
    modules.replaceEngine = withoutWords;
    views.fileErrorAnswers = {1};
    chooseKeyFileForDecryption(key("symmetric"));
    EXPECT_EQ(doubleClick(encrypted(files[0])), untilTheDecryption("1", "0", "3") + openAndClean("used_keyfile"));
}

TEST_F(EventsOfADoubleClick, endWithAWrongPasswordThatIsGivenUp)
{
    const Path locked = lockedFile();
    typePassword(L"open barley");
    views.decryptionUsers.push_back([](Fakes::FakeDecryptionPasswordView& view) { view.cancel(); });
    EXPECT_EQ(doubleClick(locked), untilTheDecryption("0", "1", "0") + NotSucceeded);
    EXPECT_EQ(views.decryptionPasswords.size(), 2U);
    EXPECT_FALSE(fs::exists(files[0]));
    // An engine without words says no more of it.
    modules.replaceEngine = withoutWords;
    EXPECT_EQ(doubleClick(locked), untilTheDecryption("0", "1", "0") + NotSucceeded);
    EXPECT_TRUE(opened.empty());
    EXPECT_TRUE(boxes.boxes().empty());
}

TEST_F(EventsOfADoubleClick, endWhenNoOtherKeyThanOneForDecryptionAloneIsThere)
{
    chooseKeyFileForEncryption(key("public"));
    encrypt("\"destiny\": 1");
    views.decryptionUsers.push_back(
        [this](Fakes::FakeDecryptionPasswordView& view)
        {
            view.fields().passwordMode = false;
            for (const char* kind : {"private", "pair"})
            {
                view.fields().keyFile = key(kind).wstring();
                view.fields().calls.clear();
                EXPECT_FALSE(view.proceed());
                EXPECT_EQ(view.fields().calls.back(),
                          L"showError PKI key files could not be used for decrypt/open/encrypt mode.");
            }
            view.cancel();
        });
    EXPECT_EQ(doubleClick(encrypted(files[0])), untilTheDecryption("0", "1", "0") + NotSucceeded);
    EXPECT_EQ(views.decryptionPasswords.size(), 1U);
    EXPECT_FALSE(fs::exists(files[0]));
}

TEST_F(EventsOfADoubleClick, tellOfAFileInTheWayThatStays)
{
    const Path locked = lockedFile();
    folder.addFile("large.bin", "mine");
    views.fileErrorAnswers = {1};
    typePassword();
    EXPECT_EQ(doubleClick(locked), untilTheDecryption("0", "1", "0", R"(
TrackViewEvent(err_file_error, A file with the name of the result exists already; it is not replaced., none)
TrackViewEvent(set_user_action_skip, , none))") +
                                       NotSucceeded);
    EXPECT_EQ(contentOf(files[0]), "mine");
    EXPECT_TRUE(fs::exists(locked));
}

TEST_F(EventsOfADoubleClick, endInTheStartUpForAnyOtherNumberOfFilesThanOne)
{
    const std::wstring text = L"Cannot decrypt file, there is no file in the pattern list";
    for (const std::vector<Path>& list : {std::vector<Path>{}, files})
        EXPECT_EQ(run(folder.addJob("double-click", list), 1), R"(
TrackView(jobrunner, JobRunner.exe)
TrackViewEvent(start_module, , none)
TrackViewEvent(jobrunner, getxml_set_operation_dblclk_decryption, none)
TrackViewEvent(error, Cannot decrypt file, there is no file in the pattern list, none)
)");
    EXPECT_EQ(boxes.boxes(), (std::vector<Fakes::ShownBox>(2, {text, L"Job Runner", 0x40})));
    EXPECT_TRUE(fs::exists(files[0]));
}
