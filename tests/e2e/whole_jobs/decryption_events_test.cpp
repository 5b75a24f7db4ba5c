#include "whole_jobs/whole_job.h"

#include <filesystem>

namespace fs = std::filesystem;
using namespace EndToEnd;

namespace
{

/// A whole decryption; `between` is what is told while it runs.
std::string decryptionOf(const std::string& processed, const std::string& failed, const std::string& megabytes,
                         const std::string& between = "")
{
    return R"(
TrackView(jobrunner, JobRunner.exe)
TrackViewEvent(start_module, , none)
TrackViewEvent(jobrunner, getxml_set_operation_decryption, none)
TrackView(jobrunner/decryption, Decryption Thread (JobRunner)))" +
           between + R"(
TrackEvent(winzel decryption usage statistics, processed_file_count, , )" +
           processed + R"()
TrackEvent(winzel decryption usage statistics, failed_file_count, , )" +
           failed + R"()
TrackEvent(winzel decryption usage statistics, processed_total_size_mb, , )" +
           megabytes + ")\n";
}

} // namespace

class EventsOfADecryption : public WholeJob
{
protected:
    EventsOfADecryption()
    {
        typeNewPassword();
        encrypt("\"destiny\": 1");
        for (const Path& file : files)
            locked.push_back(encrypted(file));
    }

    std::vector<Path> locked;
};

TEST_F(EventsOfADecryption, tellNothingOfAPassword)
{
    typePassword();
    EXPECT_EQ(decrypt(locked), decryptionOf("2", "0", "3"));
    EXPECT_EQ(contentOf(files[1]), "y");
}

TEST_F(EventsOfADecryption, tellNothingOfAWrongPassword)
{
    typePassword(L"open barley");
    typePassword();
    EXPECT_EQ(decrypt(locked), decryptionOf("2", "0", "3"));
    EXPECT_EQ(views.decryptionPasswords.size(), 2U);
}

TEST_F(EventsOfADecryption, tellNothingOfAKeyFile)
{
    typePassword();
    decrypt(locked);
    const std::pair<const char*, const char*> kinds[] = {
        {"symmetric", "symmetric"}, {"public", "private"}, {"pair", "pair"}};
    for (const auto& [locking, opening] : kinds)
    {
        for (const Path& file : locked)
            EXPECT_TRUE(fs::remove(file));
        chooseKeyFileForEncryption(key(locking));
        encrypt("\"destiny\": 1");
        chooseKeyFileForDecryption(key(opening));
        EXPECT_EQ(decrypt(locked), decryptionOf("2", "0", "3")) << opening;
        EXPECT_EQ(contentOf(files[1]), "y");
    }
}

TEST_F(EventsOfADecryption, tellNothingOfTheCancelledWindow)
{
    EXPECT_EQ(decrypt(locked), decryptionOf("0", "1", "0"));
    EXPECT_EQ(views.decryptionPasswords.size(), 1U);
}

TEST_F(EventsOfADecryption, tellNothingOfAnIgnoredFile)
{
    const auto ignore = [](Fakes::FakeDecryptionPasswordView& view) { view.ignore(); };
    views.decryptionUsers = {ignore, ignore};
    EXPECT_EQ(decrypt(locked), decryptionOf("0", "2", "0"));
}

TEST_F(EventsOfADecryption, tellTheCancelledRunUnderTheEncryption)
{
    // Intended: the other events of the job stand under the decryption.
    views.cancelsAtOnce = true;
    typePassword();
    EXPECT_EQ(decrypt(locked),
              decryptionOf("0", "1", "0") + "TrackEvent(winzel encryption usage statistics, cancelled, , none)\n");
    EXPECT_FALSE(fs::exists(files[0]));
}

TEST_F(EventsOfADecryption, tellEachAnswerAboutAFileThatFails)
{
    const Path obstacle = folder.addFile("large.bin", "in the way");
    views.fileErrorAnswers = {0, 1};
    typePassword();
    EXPECT_EQ(decrypt(locked), decryptionOf("1", "1", "0", R"(
TrackViewEvent(err_file_error, A file with the name of the result exists already; it is not replaced., none)
TrackViewEvent(set_user_action_try, , none)
TrackViewEvent(err_file_error, A file with the name of the result exists already; it is not replaced., none)
TrackViewEvent(set_user_action_skip, , none))"));
    EXPECT_EQ(contentOf(obstacle), "in the way");
}

TEST_F(EventsOfADecryption, countAFileThatIsTriedAgainOnce)
{
    const Path obstacle = folder.addFile("large.bin", "in the way");
    views.onFileError = [&] { EXPECT_TRUE(fs::remove(obstacle)); };
    views.fileErrorAnswers = {0};
    typePassword();
    EXPECT_EQ(decrypt(locked), decryptionOf("2", "0", "3", R"(
TrackViewEvent(err_file_error, A file with the name of the result exists already; it is not replaced., none)
TrackViewEvent(set_user_action_try, , none))"));
}

TEST_F(EventsOfADecryption, tellOfAnEmptyListAndOfAFileThatIsNoneOfOurs)
{
    EXPECT_EQ(decrypt({}), decryptionOf("0", "0", "0"));
    views.fileErrorAnswers = {2};
    const std::string told = decrypt({folder.addFile("note.zel", "dear reader"), locked[0]});
    EXPECT_TRUE(told.find("TrackViewEvent(set_user_action_abort, , none)\n"
                          "TrackEvent(winzel decryption usage statistics, processed_file_count, , 0)\n"
                          "TrackEvent(winzel decryption usage statistics, failed_file_count, , 1)\n"
                          "TrackEvent(winzel decryption usage statistics, processed_total_size_mb, , 0)\n") !=
                std::string::npos)
        << told;
    EXPECT_TRUE(views.decryptionPasswords.empty());
}

class EventsOfADeletion : public WholeJob
{
protected:
    std::string remove(int method) { return run(folder.addJob("delete", files, field("method", method))); }
};

TEST_F(EventsOfADeletion, nameTheMethodBeforeTheCounts)
{
    const std::pair<int, const char*> methods[] = {{0, "delete"}, {1, "delete"}, {2, "wipe"}, {3, "delete"}};
    for (const auto& [method, name] : methods)
    {
        folder.addFile("large.bin", std::string((3U << 20) + 700, 'x'));
        folder.addFile("small.txt", "y");
        boxes.answer(Platform::BoxAnswerYes);
        EXPECT_EQ(remove(method), std::string(R"(
TrackView(jobrunner, JobRunner.exe)
TrackViewEvent(start_module, , none)
TrackViewEvent(jobrunner, getxml_set_operation_wipe, none)
TrackView(jobrunner/wipe, Wipe Thread (JobRunner))
TrackEvent(winzel wipe usage statistics, use_op_)") +
                                      name + R"(, , none)
TrackEvent(winzel wipe usage statistics, processed_file_count, , 2)
TrackEvent(winzel wipe usage statistics, failed_file_count, , 0)
TrackEvent(winzel wipe usage statistics, processed_total_size_mb, , 3)
)");
        EXPECT_FALSE(fs::exists(files[0]));
    }
}

TEST_F(EventsOfADeletion, endWithTheAnswerNo)
{
    boxes.answer(Platform::BoxAnswerNo);
    EXPECT_EQ(remove(2), R"(
TrackView(jobrunner, JobRunner.exe)
TrackViewEvent(start_module, , none)
TrackViewEvent(jobrunner, getxml_set_operation_wipe, none)
TrackView(jobrunner/wipe, Wipe Thread (JobRunner))
TrackViewEvent(user_cancelled, , none)
)");
}

TEST_F(EventsOfADeletion, tellTheCancelledRunUnderTheEncryption)
{
    // Intended: the other events of the job stand under the wipe.
    views.cancelsAtOnce = true;
    boxes.answer(Platform::BoxAnswerYes);
    EXPECT_EQ(remove(2), R"(
TrackView(jobrunner, JobRunner.exe)
TrackViewEvent(start_module, , none)
TrackViewEvent(jobrunner, getxml_set_operation_wipe, none)
TrackView(jobrunner/wipe, Wipe Thread (JobRunner))
TrackEvent(winzel wipe usage statistics, use_op_wipe, , none)
TrackEvent(winzel wipe usage statistics, processed_file_count, , 0)
TrackEvent(winzel wipe usage statistics, failed_file_count, , 1)
TrackEvent(winzel wipe usage statistics, processed_total_size_mb, , 0)
TrackEvent(winzel encryption usage statistics, cancelled, , none)
)");
}

TEST_F(EventsOfADeletion, tellEachAnswerAboutAMissingFile)
{
    fs::remove(files[0]);
    views.fileErrorAnswers = {0, 1};
    boxes.answer(Platform::BoxAnswerYes);
    EXPECT_EQ(remove(0), R"(
TrackView(jobrunner, JobRunner.exe)
TrackViewEvent(start_module, , none)
TrackViewEvent(jobrunner, getxml_set_operation_wipe, none)
TrackView(jobrunner/wipe, Wipe Thread (JobRunner))
TrackViewEvent(err_file_error, The file does not exist., none)
TrackViewEvent(set_user_action_try, , none)
TrackViewEvent(err_file_error, The file does not exist., none)
TrackViewEvent(set_user_action_skip, , none)
TrackEvent(winzel wipe usage statistics, use_op_delete, , none)
TrackEvent(winzel wipe usage statistics, processed_file_count, , 1)
TrackEvent(winzel wipe usage statistics, failed_file_count, , 1)
TrackEvent(winzel wipe usage statistics, processed_total_size_mb, , 0)
)");
}
