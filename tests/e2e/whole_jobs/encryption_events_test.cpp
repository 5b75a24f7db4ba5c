#include "whole_jobs/whole_job.h"

#include <filesystem>

namespace fs = std::filesystem;
using namespace EndToEnd;

namespace
{

/// A whole encryption of the two files with a password, but for the destiny's name, and what stands behind it.
std::string passwordJob(const std::string& destiny, const std::string& riddles = "")
{
    return R"(
TrackView(jobrunner, JobRunner.exe)
TrackViewEvent(start_module, , none)
TrackViewEvent(jobrunner, getxml_set_operation_encryption, none)
TrackView(jobrunner/encryption, Encryption Thread (JobRunner))
TrackView(jobrunner/encryption/passwordwnd, Enter Password Window)
TrackViewEvent(click_ok, , none)
TrackView(jobrunner/encryption, Encryption Thread (JobRunner))
TrackEvent(winzel encryption usage statistics, count, , none)
TrackEvent(winzel encryption usage statistics, use_password, , none)
TrackEvent(winzel encryption usage statistics, use_alg_aes-256, , none)
TrackEvent(winzel encryption usage statistics, use_destiny_)" +
           destiny + ", , none)" + riddles + R"(
TrackEvent(winzel encryption usage statistics, processed_file_count, , 2)
TrackEvent(winzel encryption usage statistics, failed_file_count, , 0)
TrackEvent(winzel encryption usage statistics, processed_total_size_mb, , 3)
)";
}

const std::string UseRiddle = "\nTrackEvent(winzel encryption usage statistics, use_riddle, , none)";

void setRiddle(Fakes::EncryptionPasswordRecord& fields)
{
    fields.riddle = L"first pet";
}

} // namespace

class EventsOfAnEncryption : public WholeJob
{
protected:
    /// A file with the name of the first result.
    Path addObstacle() const { return folder.addFile(encrypted(files[0]).filename(), "in the way"); }
};

TEST_F(EventsOfAnEncryption, withEachDestiny)
{
    const char* const names[] = {"leave", "delete", "wipe"};
    for (int destiny = 0; destiny < 3; ++destiny)
    {
        folder.addFile("small.txt", "y");
        folder.addFile("large.bin", std::string((3U << 20) + 700, 'x'));
        typeNewPassword();
        EXPECT_EQ(encrypt(field("destiny", destiny)), passwordJob(names[destiny]));
        EXPECT_EQ(fs::exists(files[0]), destiny == 0);
        for (const Path& file : files)
            EXPECT_TRUE(fs::remove(encrypted(file)));
    }
}

TEST_F(EventsOfAnEncryption, takeAnUnknownDestinyOfTheJobAsTheWindowShowsIt)
{
    typeNewPassword();
    EXPECT_EQ(encrypt("\"destiny\": 7"), passwordJob("wipe"));
}

TEST_F(EventsOfAnEncryption, countARiddleOnce)
{
    typeNewPassword(setRiddle);
    EXPECT_EQ(encrypt(), passwordJob("leave", UseRiddle));
}

TEST_F(EventsOfAnEncryption, countAnExtraTextAsARiddle)
{
    typeNewPassword();
    EXPECT_EQ(encrypt(R"("destiny": 0, "extraText": "from the front end")"), passwordJob("leave", UseRiddle));
}

TEST_F(EventsOfAnEncryption, countARiddleWithAnExtraTextTwice)
{
    // Intended: both texts are told by the same event.
    typeNewPassword(setRiddle);
    EXPECT_EQ(encrypt(R"("destiny": 0, "extraText": "from the front end")"),
              passwordJob("leave", UseRiddle + UseRiddle));
}

TEST_F(EventsOfAnEncryption, nameTheAlgorithmOfTheWindow)
{
    typeNewPassword([](Fakes::EncryptionPasswordRecord& fields) { fields.algorithm = 14; });
    EXPECT_EQ(encrypt(R"("destiny": 1, "algorithm": 16)"), R"(
TrackView(jobrunner, JobRunner.exe)
TrackViewEvent(start_module, , none)
TrackViewEvent(jobrunner, getxml_set_operation_encryption, none)
TrackView(jobrunner/encryption, Encryption Thread (JobRunner))
TrackView(jobrunner/encryption/passwordwnd, Enter Password Window)
TrackViewEvent(click_ok, , none)
TrackView(jobrunner/encryption, Encryption Thread (JobRunner))
TrackEvent(winzel encryption usage statistics, count, , none)
TrackEvent(winzel encryption usage statistics, use_password, , none)
TrackEvent(winzel encryption usage statistics, use_alg_twofish, , none)
TrackEvent(winzel encryption usage statistics, use_destiny_delete, , none)
TrackEvent(winzel encryption usage statistics, processed_file_count, , 2)
TrackEvent(winzel encryption usage statistics, failed_file_count, , 0)
TrackEvent(winzel encryption usage statistics, processed_total_size_mb, , 3)
)");
}

TEST_F(EventsOfAnEncryption, nameEachKindOfKeyFileThatHasAName)
{
    const std::pair<const char*, const char*> kinds[] = {
        {"symmetric", "\nTrackEvent(winzel encryption usage statistics, use_keyfile_symmetric, , none)"},
        {"public", "\nTrackEvent(winzel encryption usage statistics, use_keyfile_public_rsa, , none)"},
        {"pair", ""}};
    for (const auto& [kind, event] : kinds)
    {
        chooseKeyFileForEncryption(key(kind));
        EXPECT_EQ(encrypt(), std::string(R"(
TrackView(jobrunner, JobRunner.exe)
TrackViewEvent(start_module, , none)
TrackViewEvent(jobrunner, getxml_set_operation_encryption, none)
TrackView(jobrunner/encryption, Encryption Thread (JobRunner))
TrackView(jobrunner/encryption/passwordwnd, Enter Password Window)
TrackViewEvent(click_ok, , none)
TrackView(jobrunner/encryption, Encryption Thread (JobRunner))
TrackEvent(winzel encryption usage statistics, count, , none))") +
                                 event + R"(
TrackEvent(winzel encryption usage statistics, use_alg_aes-256, , none)
TrackEvent(winzel encryption usage statistics, use_destiny_leave, , none)
TrackEvent(winzel encryption usage statistics, processed_file_count, , 2)
TrackEvent(winzel encryption usage statistics, failed_file_count, , 0)
TrackEvent(winzel encryption usage statistics, processed_total_size_mb, , 3)
)");
        for (const Path& file : files)
            EXPECT_TRUE(fs::remove(encrypted(file)));
    }
}

TEST_F(EventsOfAnEncryption, endWithTheKeyFileThatDoesNotLoad)
{
    const Path notAKey = folder.addFile("note.zelkey", "dear reader");
    const std::pair<Path, const wchar_t*> keys[] = {
        {folder.path() / "missing.zelkey", L"The file does not exist."},
        {folder.path(), L"The key file is a folder."},
        {folder.addFile("empty.zelkey", ""), L"The key file is empty."},
        {notAKey, L"The file is no key file."},
        {key("private"), L"A private key only decrypts; encrypting needs the public one."}};
    std::vector<Fakes::ShownBox> expected;
    for (const auto& [file, text] : keys)
    {
        chooseKeyFileForEncryption(file);
        EXPECT_EQ(encrypt("\"destiny\": 2"), R"(
TrackView(jobrunner, JobRunner.exe)
TrackViewEvent(start_module, , none)
TrackViewEvent(jobrunner, getxml_set_operation_encryption, none)
TrackView(jobrunner/encryption, Encryption Thread (JobRunner))
TrackView(jobrunner/encryption/passwordwnd, Enter Password Window)
TrackViewEvent(click_ok, , none)
TrackView(jobrunner/encryption, Encryption Thread (JobRunner))
TrackViewEvent(err_cannot_load_key_file, , none)
)");
        expected.push_back({std::wstring(L"Cannot load key file: ") + text, L"Cannot load key file", 0x40});
        EXPECT_TRUE(fs::exists(files[0]));
    }
    EXPECT_EQ(boxes.boxes(), expected);
    EXPECT_TRUE(views.progressViews.empty());
}

TEST_F(EventsOfAnEncryption, endWithTheCancelledWindow)
{
    EXPECT_EQ(encrypt("\"destiny\": 2"), R"(
TrackView(jobrunner, JobRunner.exe)
TrackViewEvent(start_module, , none)
TrackViewEvent(jobrunner, getxml_set_operation_encryption, none)
TrackView(jobrunner/encryption, Encryption Thread (JobRunner))
TrackView(jobrunner/encryption/passwordwnd, Enter Password Window)
TrackViewEvent(click_cancel, , none)
TrackView(jobrunner/encryption, Encryption Thread (JobRunner))
)");
    EXPECT_TRUE(fs::exists(files[0]));
}

TEST_F(EventsOfAnEncryption, tellTheCancelledRunBehindItsCounts)
{
    views.cancelsAtOnce = true;
    typeNewPassword();
    EXPECT_EQ(encrypt("\"destiny\": 1"), R"(
TrackView(jobrunner, JobRunner.exe)
TrackViewEvent(start_module, , none)
TrackViewEvent(jobrunner, getxml_set_operation_encryption, none)
TrackView(jobrunner/encryption, Encryption Thread (JobRunner))
TrackView(jobrunner/encryption/passwordwnd, Enter Password Window)
TrackViewEvent(click_ok, , none)
TrackView(jobrunner/encryption, Encryption Thread (JobRunner))
TrackEvent(winzel encryption usage statistics, count, , none)
TrackEvent(winzel encryption usage statistics, use_password, , none)
TrackEvent(winzel encryption usage statistics, use_alg_aes-256, , none)
TrackEvent(winzel encryption usage statistics, use_destiny_delete, , none)
TrackEvent(winzel encryption usage statistics, processed_file_count, , 0)
TrackEvent(winzel encryption usage statistics, failed_file_count, , 1)
TrackEvent(winzel encryption usage statistics, processed_total_size_mb, , 0)
TrackEvent(winzel encryption usage statistics, cancelled, , none)
)");
    for (const Path& file : files)
        EXPECT_TRUE(fs::exists(file));
}

TEST_F(EventsOfAnEncryption, tellEachAnswerAboutAFileThatFails)
{
    const Path obstacle = addObstacle();
    views.fileErrorAnswers = {0, 0, 1};
    typeNewPassword();
    EXPECT_EQ(encrypt(), R"(
TrackView(jobrunner, JobRunner.exe)
TrackViewEvent(start_module, , none)
TrackViewEvent(jobrunner, getxml_set_operation_encryption, none)
TrackView(jobrunner/encryption, Encryption Thread (JobRunner))
TrackView(jobrunner/encryption/passwordwnd, Enter Password Window)
TrackViewEvent(click_ok, , none)
TrackView(jobrunner/encryption, Encryption Thread (JobRunner))
TrackEvent(winzel encryption usage statistics, count, , none)
TrackEvent(winzel encryption usage statistics, use_password, , none)
TrackEvent(winzel encryption usage statistics, use_alg_aes-256, , none)
TrackEvent(winzel encryption usage statistics, use_destiny_leave, , none)
TrackViewEvent(err_file_error, A file with the name of the result exists already; it is not replaced., none)
TrackViewEvent(set_user_action_try, , none)
TrackViewEvent(err_file_error, A file with the name of the result exists already; it is not replaced., none)
TrackViewEvent(set_user_action_try, , none)
TrackViewEvent(err_file_error, A file with the name of the result exists already; it is not replaced., none)
TrackViewEvent(set_user_action_skip, , none)
TrackEvent(winzel encryption usage statistics, processed_file_count, , 1)
TrackEvent(winzel encryption usage statistics, failed_file_count, , 1)
TrackEvent(winzel encryption usage statistics, processed_total_size_mb, , 0)
)");
    EXPECT_EQ(contentOf(obstacle), "in the way");
    EXPECT_TRUE(fs::exists(encrypted(files[1])));
}

TEST_F(EventsOfAnEncryption, tellAnAbortThatIsNoCancel)
{
    addObstacle();
    views.fileErrorAnswers = {2};
    typeNewPassword();
    EXPECT_EQ(encrypt(), R"(
TrackView(jobrunner, JobRunner.exe)
TrackViewEvent(start_module, , none)
TrackViewEvent(jobrunner, getxml_set_operation_encryption, none)
TrackView(jobrunner/encryption, Encryption Thread (JobRunner))
TrackView(jobrunner/encryption/passwordwnd, Enter Password Window)
TrackViewEvent(click_ok, , none)
TrackView(jobrunner/encryption, Encryption Thread (JobRunner))
TrackEvent(winzel encryption usage statistics, count, , none)
TrackEvent(winzel encryption usage statistics, use_password, , none)
TrackEvent(winzel encryption usage statistics, use_alg_aes-256, , none)
TrackEvent(winzel encryption usage statistics, use_destiny_leave, , none)
TrackViewEvent(err_file_error, A file with the name of the result exists already; it is not replaced., none)
TrackViewEvent(set_user_action_abort, , none)
TrackEvent(winzel encryption usage statistics, processed_file_count, , 0)
TrackEvent(winzel encryption usage statistics, failed_file_count, , 1)
TrackEvent(winzel encryption usage statistics, processed_total_size_mb, , 0)
)");
    EXPECT_FALSE(fs::exists(encrypted(files[1])));
}
