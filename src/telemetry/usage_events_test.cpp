#include "telemetry/usage_events.h"

#include "telemetry/product_information.h"

#include <gtest/gtest.h>

// Who evaluates the reports knows these words. They are spelled out here once more, so that none changes unnoticed.

using namespace Halden::ZEL::Telemetry;

TEST(TheWordsOfTheReports, nameTheProcessAndTheProduct)
{
    EXPECT_STREQ(ProcessTag, L"jobrunner");
    EXPECT_STREQ(ProcessTitle, L"JobRunner.exe");
    EXPECT_STREQ(ApplicationTag, L"winzel");
    EXPECT_EQ(ProductInformation().GetVersion(), L"6.13");
}

TEST(TheWordsOfTheReports, nameTheCategories)
{
    EXPECT_STREQ(UsageCategory::Module, L"winzel module usage statistics");
    EXPECT_STREQ(UsageCategory::Encryption, L"winzel encryption usage statistics");
    EXPECT_STREQ(UsageCategory::EncryptionSfx, L"winzel encryption sfx usage statistics");
    EXPECT_STREQ(UsageCategory::Decryption, L"winzel decryption usage statistics");
    EXPECT_STREQ(UsageCategory::Wipe, L"winzel wipe usage statistics");
    EXPECT_STREQ(UsageCategory::Crash, L"winzel crash statistics");
}

TEST(TheWordsOfTheReports, nameTheViews)
{
    EXPECT_STREQ(UsageView::Encryption, L"encryption");
    EXPECT_STREQ(UsageView::EncryptionTitle, L"Encryption Thread (JobRunner)");
    EXPECT_STREQ(UsageView::EncryptionSfx, L"encryption_sfx");
    EXPECT_STREQ(UsageView::EncryptionSfxTitle, L"Encryption SFX Thread (JobRunner)");
    EXPECT_STREQ(UsageView::Decryption, L"decryption");
    EXPECT_STREQ(UsageView::DecryptionTitle, L"Decryption Thread (JobRunner)");
    EXPECT_STREQ(UsageView::Wipe, L"wipe");
    EXPECT_STREQ(UsageView::WipeTitle, L"Wipe Thread (JobRunner)");
    EXPECT_STREQ(UsageView::DoubleClick, L"dblclk");
    EXPECT_STREQ(UsageView::DoubleClickTitle, L"Double Click File Thread (JobRunner)");
    EXPECT_STREQ(UsageView::DecryptStep, L"decrypt");
    EXPECT_STREQ(UsageView::DecryptStepTitle, L"Decrypt (DblClk in JobRunner)");
    EXPECT_STREQ(UsageView::OpenStep, L"openandwait");
    EXPECT_STREQ(UsageView::OpenStepTitle, L"Open and Wait (DblClk in JobRunner)");
    EXPECT_STREQ(UsageView::CleanStep, L"clean");
    EXPECT_STREQ(UsageView::CleanStepTitle, L"Clean (DblClk in JobRunner)");
    EXPECT_STREQ(UsageView::ReencryptStep, L"encrypt");
    EXPECT_STREQ(UsageView::ReencryptStepTitle, L"Re-encrypt (DblClk in JobRunner)");
    EXPECT_STREQ(UsageView::PasswordWindow, L"passwordwnd");
    EXPECT_STREQ(UsageView::PasswordWindowTitle, L"Enter Password Window");
    EXPECT_STREQ(UsageView::CrashTitle, L"App Crash");
    EXPECT_STREQ(UsageView::HeartBeat, L"heart-beat");
    EXPECT_STREQ(UsageView::HeartBeatTitle, L"HeartBeat once a Day");
}

TEST(TheWordsOfTheReports, nameWhatTheStartTells)
{
    EXPECT_STREQ(UsageEvent::StartModule, L"start_module");
    EXPECT_STREQ(UsageEvent::Error, L"error");
    EXPECT_STREQ(UsageEvent::OperationEncryption, L"getxml_set_operation_encryption");
    EXPECT_STREQ(UsageEvent::OperationSfxEncryption, L"getxml_set_operation_sfxencryption");
    EXPECT_STREQ(UsageEvent::OperationDecryption, L"getxml_set_operation_decryption");
    EXPECT_STREQ(UsageEvent::OperationDoubleClickDecryption, L"getxml_set_operation_dblclk_decryption");
    EXPECT_STREQ(UsageEvent::OperationWipe, L"getxml_set_operation_wipe");
}

TEST(TheWordsOfTheReports, nameWhatAJobTells)
{
    EXPECT_STREQ(UsageEvent::ProcessedFileCount, L"processed_file_count");
    EXPECT_STREQ(UsageEvent::FailedFileCount, L"failed_file_count");
    EXPECT_STREQ(UsageEvent::ProcessedTotalSizeMb, L"processed_total_size_mb");
    EXPECT_STREQ(UsageEvent::Cancelled, L"cancelled");
    EXPECT_STREQ(UsageEvent::UserCancelled, L"user_cancelled");
    EXPECT_STREQ(UsageEvent::UseOperationWipe, L"use_op_wipe");
    EXPECT_STREQ(UsageEvent::UseOperationDelete, L"use_op_delete");
    EXPECT_STREQ(UsageEvent::Execute, L"execute");
    EXPECT_STREQ(UsageEvent::Succeeded, L"succeeded");
    EXPECT_STREQ(UsageEvent::NotSucceeded, L"not_succeeded");
    EXPECT_STREQ(UsageEvent::UsedKeyFile, L"used_keyfile");
    EXPECT_STREQ(UsageEvent::UsedPassword, L"used_password");
    EXPECT_STREQ(UsageEvent::FileWasModified, L"file_was_modified");
    EXPECT_STREQ(UsageEvent::FileWasNotModified, L"file_was_not_modified");
}

TEST(TheWordsOfTheReports, nameTheParametersOfAnEncryption)
{
    EXPECT_STREQ(UsageEvent::Count, L"count");
    EXPECT_STREQ(UsageEvent::UsePassword, L"use_password");
    EXPECT_STREQ(UsageEvent::UseSymmetricKeyFile, L"use_keyfile_symmetric");
    EXPECT_STREQ(UsageEvent::UsePublicKeyFile, L"use_keyfile_public_rsa");
    EXPECT_STREQ(UsageEvent::UseAlgorithmPrefix, L"use_alg_");
    EXPECT_STREQ(UsageEvent::UseDestinyPrefix, L"use_destiny_");
    EXPECT_STREQ(UsageEvent::UseRiddle, L"use_riddle");
    EXPECT_STREQ(UsageEvent::UseExtraText, L"use_riddle");
    EXPECT_STREQ(UsageEvent::UseCustomSfxComment, L"use_custom_sfx_comment");
}

TEST(TheWordsOfTheReports, nameWhatTheWindowsTell)
{
    EXPECT_STREQ(UsageEvent::OpenEncryptionPasswordWindow, L"domodal_encryptionpasswordwnd");
    EXPECT_STREQ(UsageEvent::EncryptionPasswordWindowCancelled, L"domodal_cancelled");
    EXPECT_STREQ(UsageEvent::SaveSfxComment, L"save_sfx_comment");
    EXPECT_STREQ(UsageEvent::CannotLoadKeyFile, L"err_cannot_load_key_file");
    EXPECT_STREQ(UsageEvent::ClickOk, L"click_ok");
    EXPECT_STREQ(UsageEvent::ClickCancel, L"click_cancel");
    EXPECT_STREQ(UsageEvent::FileError, L"err_file_error");
    EXPECT_STREQ(UsageEvent::SetUserActionTry, L"set_user_action_try");
    EXPECT_STREQ(UsageEvent::SetUserActionSkip, L"set_user_action_skip");
    EXPECT_STREQ(UsageEvent::SetUserActionAbort, L"set_user_action_abort");
}

TEST(TheWordsOfTheReports, nameWhatACrashAndAHeartBeatTell)
{
    EXPECT_STREQ(UsageEvent::CrashModule, L"crash_module");
    EXPECT_STREQ(UsageEvent::CrashModuleLabel, L"Crash in Module");
    EXPECT_STREQ(UsageEvent::CrashCodeLabel, L"Crash Code");
    EXPECT_STREQ(UsageEvent::CrashAddress, L"crash_address");
    EXPECT_STREQ(UsageEvent::CrashAddressLabel, L"Crash Address");
    EXPECT_STREQ(UsageEvent::HeartBeat, L"heartbeat");
    EXPECT_STREQ(UsageEvent::TelemetryDisabled, L"set_disabled_telemetry");
}

TEST(TheWordsOfTheReports, holdTwoThatNobodySends)
{
    EXPECT_STREQ(UsageEvent::SpentTimeSeconds, L"spent_time_seconds");
    EXPECT_STREQ(UsageEvent::Show, L"show");
}
