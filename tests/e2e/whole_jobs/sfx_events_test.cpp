#include "whole_jobs/whole_job.h"

#include <filesystem>

namespace fs = std::filesystem;
using namespace EndToEnd;

namespace
{

/// A whole self-extracting encryption of the two files, from the key's event on as told.
std::string passwordJob(const std::string& destiny, const std::string& texts)
{
    return R"(
TrackView(jobrunner, JobRunner.exe)
TrackViewEvent(start_module, , none)
TrackViewEvent(jobrunner, getxml_set_operation_sfxencryption, none)
TrackView(jobrunner/encryption_sfx, Encryption SFX Thread (JobRunner))
TrackViewEvent(domodal_encryptionpasswordwnd, , none)
TrackView(jobrunner/encryption_sfx/passwordwnd, Enter Password Window)
TrackViewEvent(click_ok, , none)
TrackView(jobrunner/encryption_sfx, Encryption SFX Thread (JobRunner))
TrackEvent(winzel encryption usage statistics, use_password, , none)
TrackEvent(winzel encryption sfx usage statistics, use_alg_aes-256, , none)
TrackEvent(winzel encryption sfx usage statistics, use_destiny_)" +
           destiny + ", , none)" + texts + R"(
TrackEvent(winzel encryption sfx usage statistics, processed_file_count, , 2)
TrackEvent(winzel encryption sfx usage statistics, failed_file_count, , 0)
TrackEvent(winzel encryption sfx usage statistics, processed_total_size_mb, , 3)
)";
}

const std::string UseRiddle = "\nTrackEvent(winzel encryption sfx usage statistics, use_riddle, , none)";
const std::string UseCustomComment =
    "\nTrackEvent(winzel encryption sfx usage statistics, use_custom_sfx_comment, , none)";
const std::string SaveComment = "\nTrackViewEvent(save_sfx_comment, , none)";

} // namespace

class EventsOfASelfExtractingEncryption : public WholeJob
{
protected:
    /// The package is named after the first file.
    Path package() const { return Path(files[0]) += ".exe"; }

    /// Runs a job in which the user writes this comment, and removes the package.
    std::string withComment(const std::wstring& comment, bool saved)
    {
        typeNewPassword(
            [=](Fakes::EncryptionPasswordRecord& fields)
            {
                fields.sfxComment = comment;
                fields.sfxCommentDefault = saved;
            });
        const std::string told = encryptSfx();
        EXPECT_TRUE(fs::remove(package()));
        return told;
    }

    std::wstring commentAtOpening() const
    {
        for (const std::wstring& call : views.encryptionPasswords.back()->calls)
        {
            if (call.starts_with(L"setSfxComment "))
                return call.substr(14);
        }
        return L"none was set";
    }

    const KeptComment kept;
};

TEST_F(EventsOfASelfExtractingEncryption, withEachDestinyAndTheDefaultComment)
{
    const char* const names[] = {"leave", "delete", "wipe"};
    for (int destiny = 0; destiny < 3; ++destiny)
    {
        folder.addFile("small.txt", "y");
        folder.addFile("large.bin", std::string((3U << 20) + 700, 'x'));
        typeNewPassword();
        EXPECT_EQ(encryptSfx(field("destiny", destiny)), passwordJob(names[destiny], ""));
        EXPECT_EQ(fs::exists(files[0]), destiny == 0);
        EXPECT_TRUE(fs::remove(package()));
    }
}

TEST_F(EventsOfASelfExtractingEncryption, takeAnUnknownDestinyAsWipe)
{
    typeNewPassword();
    EXPECT_EQ(encryptSfx("\"destiny\": 7"), passwordJob("wipe", ""));
}

TEST_F(EventsOfASelfExtractingEncryption, countARiddleOnceWhateverTheExtraText)
{
    typeNewPassword([](Fakes::EncryptionPasswordRecord& fields) { fields.riddle = L"first pet"; });
    EXPECT_EQ(encryptSfx(R"("destiny": 0, "extraText": "of no use here")"), passwordJob("leave", UseRiddle));
}

TEST_F(EventsOfASelfExtractingEncryption, callTheCommentOfTheFrontEndCustomWithoutTheDomain)
{
    typeNewPassword();
    EXPECT_EQ(encryptSfx(R"("destiny": 0, "comment": "holiday pictures")"), passwordJob("leave", UseCustomComment));
    EXPECT_EQ(commentAtOpening(), L"holiday pictures");
}

TEST_F(EventsOfASelfExtractingEncryption, callACommentWithTheDomainTheSuitesOwn)
{
    EXPECT_EQ(withComment(L"From me, with www.halden.example", false), passwordJob("leave", ""));
    EXPECT_EQ(withComment(L"From me, with WWW.halden.example", false), passwordJob("leave", UseCustomComment));
}

TEST_F(EventsOfASelfExtractingEncryption, tellASavedCommentWhichTheNextJobBeginsWith)
{
    EXPECT_EQ(withComment(L"tax papers", true), passwordJob("leave", UseCustomComment + SaveComment));
    EXPECT_EQ(kept.saved(), "tax papers");
    typeNewPassword();
    EXPECT_EQ(encryptSfx(), passwordJob("leave", UseCustomComment));
    EXPECT_EQ(commentAtOpening(), L"tax papers");
}

TEST_F(EventsOfASelfExtractingEncryption, doNotTellAnEmptyCommentThatIsSaved)
{
    // Intended: an empty comment is the user's own, and is saved without a word.
    EXPECT_EQ(withComment(L"", true), passwordJob("leave", UseCustomComment));
    EXPECT_EQ(kept.saved(), "");
}

TEST_F(EventsOfASelfExtractingEncryption, doNotTellACommentThatIsNotSaved)
{
    EXPECT_EQ(withComment(L"tax papers", false), passwordJob("leave", UseCustomComment));
    EXPECT_EQ(kept.saved(), std::nullopt);
}

TEST_F(EventsOfASelfExtractingEncryption, tellRiddleThenCommentThenTheSave)
{
    typeNewPassword(
        [](Fakes::EncryptionPasswordRecord& fields)
        {
            fields.riddle = L"first pet";
            fields.sfxComment = L"tax papers";
            fields.sfxCommentDefault = true;
        });
    EXPECT_EQ(encryptSfx(), passwordJob("leave", UseRiddle + UseCustomComment + SaveComment));
}

TEST_F(EventsOfASelfExtractingEncryption, nameEachKindOfKeyFileUnderThePlainEncryption)
{
    const std::pair<const char*, const char*> kinds[] = {
        {"symmetric", "\nTrackEvent(winzel encryption usage statistics, use_keyfile_symmetric, , none)"},
        {"public", "\nTrackEvent(winzel encryption usage statistics, use_keyfile_public_rsa, , none)"},
        {"pair", ""}};
    for (const auto& [kind, event] : kinds)
    {
        chooseKeyFileForEncryption(key(kind));
        EXPECT_EQ(encryptSfx(), std::string(R"(
TrackView(jobrunner, JobRunner.exe)
TrackViewEvent(start_module, , none)
TrackViewEvent(jobrunner, getxml_set_operation_sfxencryption, none)
TrackView(jobrunner/encryption_sfx, Encryption SFX Thread (JobRunner))
TrackViewEvent(domodal_encryptionpasswordwnd, , none)
TrackView(jobrunner/encryption_sfx/passwordwnd, Enter Password Window)
TrackViewEvent(click_ok, , none)
TrackView(jobrunner/encryption_sfx, Encryption SFX Thread (JobRunner)))") +
                                    event + R"(
TrackEvent(winzel encryption sfx usage statistics, use_alg_aes-256, , none)
TrackEvent(winzel encryption sfx usage statistics, use_destiny_leave, , none)
TrackEvent(winzel encryption sfx usage statistics, processed_file_count, , 2)
TrackEvent(winzel encryption sfx usage statistics, failed_file_count, , 0)
TrackEvent(winzel encryption sfx usage statistics, processed_total_size_mb, , 3)
)");
        EXPECT_TRUE(fs::remove(package()));
    }
}

TEST_F(EventsOfASelfExtractingEncryption, endWithTheKeyFileThatDoesNotLoad)
{
    chooseKeyFileForEncryption(folder.addFile("note.zelkey", "dear reader"));
    EXPECT_EQ(encryptSfx("\"destiny\": 2"), R"(
TrackView(jobrunner, JobRunner.exe)
TrackViewEvent(start_module, , none)
TrackViewEvent(jobrunner, getxml_set_operation_sfxencryption, none)
TrackView(jobrunner/encryption_sfx, Encryption SFX Thread (JobRunner))
TrackViewEvent(domodal_encryptionpasswordwnd, , none)
TrackView(jobrunner/encryption_sfx/passwordwnd, Enter Password Window)
TrackViewEvent(click_ok, , none)
TrackView(jobrunner/encryption_sfx, Encryption SFX Thread (JobRunner))
TrackViewEvent(err_cannot_load_key_file, , none)
)");
    EXPECT_EQ(boxes.boxes(), (std::vector<Fakes::ShownBox>{
                                 {L"Cannot load key file: The file is no key file.", L"Cannot load key file", 0x40}}));
    EXPECT_TRUE(fs::exists(files[0]));
}

TEST_F(EventsOfASelfExtractingEncryption, endWithTheCancelledWindow)
{
    EXPECT_EQ(encryptSfx(), R"(
TrackView(jobrunner, JobRunner.exe)
TrackViewEvent(start_module, , none)
TrackViewEvent(jobrunner, getxml_set_operation_sfxencryption, none)
TrackView(jobrunner/encryption_sfx, Encryption SFX Thread (JobRunner))
TrackViewEvent(domodal_encryptionpasswordwnd, , none)
TrackView(jobrunner/encryption_sfx/passwordwnd, Enter Password Window)
TrackViewEvent(click_cancel, , none)
TrackView(jobrunner/encryption_sfx, Encryption SFX Thread (JobRunner))
TrackViewEvent(domodal_cancelled, , none)
)");
}

TEST_F(EventsOfASelfExtractingEncryption, tellTheCancelledRunUnderTheirOwnCategory)
{
    views.cancelsAtOnce = true;
    typeNewPassword();
    EXPECT_EQ(encryptSfx("\"destiny\": 1"), R"(
TrackView(jobrunner, JobRunner.exe)
TrackViewEvent(start_module, , none)
TrackViewEvent(jobrunner, getxml_set_operation_sfxencryption, none)
TrackView(jobrunner/encryption_sfx, Encryption SFX Thread (JobRunner))
TrackViewEvent(domodal_encryptionpasswordwnd, , none)
TrackView(jobrunner/encryption_sfx/passwordwnd, Enter Password Window)
TrackViewEvent(click_ok, , none)
TrackView(jobrunner/encryption_sfx, Encryption SFX Thread (JobRunner))
TrackEvent(winzel encryption usage statistics, use_password, , none)
TrackEvent(winzel encryption sfx usage statistics, use_alg_aes-256, , none)
TrackEvent(winzel encryption sfx usage statistics, use_destiny_delete, , none)
TrackEvent(winzel encryption sfx usage statistics, processed_file_count, , 0)
TrackEvent(winzel encryption sfx usage statistics, failed_file_count, , 1)
TrackEvent(winzel encryption sfx usage statistics, processed_total_size_mb, , 0)
TrackEvent(winzel encryption sfx usage statistics, cancelled, , none)
)");
    EXPECT_TRUE(fs::exists(files[0]));
    EXPECT_FALSE(fs::exists(package()));
}

TEST_F(EventsOfASelfExtractingEncryption, tellTheAnswerAboutAPackageThatCannotBeMade)
{
    folder.addFile(package().filename(), "in the way");
    views.fileErrorAnswers = {1};
    typeNewPassword();
    EXPECT_EQ(encryptSfx(), R"(
TrackView(jobrunner, JobRunner.exe)
TrackViewEvent(start_module, , none)
TrackViewEvent(jobrunner, getxml_set_operation_sfxencryption, none)
TrackView(jobrunner/encryption_sfx, Encryption SFX Thread (JobRunner))
TrackViewEvent(domodal_encryptionpasswordwnd, , none)
TrackView(jobrunner/encryption_sfx/passwordwnd, Enter Password Window)
TrackViewEvent(click_ok, , none)
TrackView(jobrunner/encryption_sfx, Encryption SFX Thread (JobRunner))
TrackEvent(winzel encryption usage statistics, use_password, , none)
TrackEvent(winzel encryption sfx usage statistics, use_alg_aes-256, , none)
TrackEvent(winzel encryption sfx usage statistics, use_destiny_leave, , none)
TrackViewEvent(err_file_error, A file with the name of the result exists already; it is not replaced., none)
TrackViewEvent(set_user_action_skip, , none)
TrackEvent(winzel encryption sfx usage statistics, processed_file_count, , 0)
TrackEvent(winzel encryption sfx usage statistics, failed_file_count, , 1)
TrackEvent(winzel encryption sfx usage statistics, processed_total_size_mb, , 0)
)");
}
