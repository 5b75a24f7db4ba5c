#pragma once

/// The words of the usage reports. Each is defined once, here; every text goes out as it stands.
namespace Halden::ZEL::Telemetry
{

/// First segment of the path of every view.
inline constexpr const wchar_t* ProcessTag = L"jobrunner";
/// Title of the first view.
inline constexpr const wchar_t* ProcessTitle = L"JobRunner.exe";
/// What the statistics client knows the suite by.
inline constexpr const wchar_t* ApplicationTag = L"winzel";

namespace UsageCategory
{
inline constexpr const wchar_t* Module = L"winzel module usage statistics";
inline constexpr const wchar_t* Encryption = L"winzel encryption usage statistics";
inline constexpr const wchar_t* EncryptionSfx = L"winzel encryption sfx usage statistics";
inline constexpr const wchar_t* Decryption = L"winzel decryption usage statistics";
inline constexpr const wchar_t* Wipe = L"winzel wipe usage statistics";
inline constexpr const wchar_t* Crash = L"winzel crash statistics";
} // namespace UsageCategory

/// Path segments behind the first, and titles of the views.
namespace UsageView
{
inline constexpr const wchar_t* Encryption = L"encryption";
inline constexpr const wchar_t* EncryptionTitle = L"Encryption Thread (JobRunner)";
inline constexpr const wchar_t* EncryptionSfx = L"encryption_sfx";
inline constexpr const wchar_t* EncryptionSfxTitle = L"Encryption SFX Thread (JobRunner)";
inline constexpr const wchar_t* Decryption = L"decryption";
inline constexpr const wchar_t* DecryptionTitle = L"Decryption Thread (JobRunner)";
inline constexpr const wchar_t* Wipe = L"wipe";
inline constexpr const wchar_t* WipeTitle = L"Wipe Thread (JobRunner)";
inline constexpr const wchar_t* DoubleClick = L"dblclk";
inline constexpr const wchar_t* DoubleClickTitle = L"Double Click File Thread (JobRunner)";
/// Third segments, behind the one of the double-click job: its steps.
inline constexpr const wchar_t* DecryptStep = L"decrypt";
inline constexpr const wchar_t* DecryptStepTitle = L"Decrypt (DblClk in JobRunner)";
inline constexpr const wchar_t* OpenStep = L"openandwait";
inline constexpr const wchar_t* OpenStepTitle = L"Open and Wait (DblClk in JobRunner)";
inline constexpr const wchar_t* CleanStep = L"clean";
inline constexpr const wchar_t* CleanStepTitle = L"Clean (DblClk in JobRunner)";
inline constexpr const wchar_t* ReencryptStep = L"encrypt";
inline constexpr const wchar_t* ReencryptStepTitle = L"Re-encrypt (DblClk in JobRunner)";
/// Third segment, behind the one of the encryption that asks.
inline constexpr const wchar_t* PasswordWindow = L"passwordwnd";
inline constexpr const wchar_t* PasswordWindowTitle = L"Enter Password Window";
/// Title of the view that a crash is reported under. Its path is the tag of the module alone.
inline constexpr const wchar_t* CrashTitle = L"App Crash";
/// Second segment, behind the tag of the module.
inline constexpr const wchar_t* HeartBeat = L"heart-beat";
inline constexpr const wchar_t* HeartBeatTitle = L"HeartBeat once a Day";
} // namespace UsageView

namespace UsageEvent
{

// Actions of the start-up.
inline constexpr const wchar_t* StartModule = L"start_module";
inline constexpr const wchar_t* Error = L"error";

// Labels under the action `ProcessTag`: the job that the document asks for.
inline constexpr const wchar_t* OperationEncryption = L"getxml_set_operation_encryption";
inline constexpr const wchar_t* OperationSfxEncryption = L"getxml_set_operation_sfxencryption";
inline constexpr const wchar_t* OperationDecryption = L"getxml_set_operation_decryption";
inline constexpr const wchar_t* OperationDoubleClickDecryption = L"getxml_set_operation_dblclk_decryption";
inline constexpr const wchar_t* OperationWipe = L"getxml_set_operation_wipe";

// Actions at the end of a job, in the order in which they are sent.
inline constexpr const wchar_t* ProcessedFileCount = L"processed_file_count";
inline constexpr const wchar_t* FailedFileCount = L"failed_file_count";
inline constexpr const wchar_t* ProcessedTotalSizeMb = L"processed_total_size_mb";
inline constexpr const wchar_t* Cancelled = L"cancelled";

// Actions of an encryption, once its parameters are known. The names behind the two prefixes are in usage_names.h.
inline constexpr const wchar_t* Count = L"count";
inline constexpr const wchar_t* UsePassword = L"use_password";
inline constexpr const wchar_t* UseSymmetricKeyFile = L"use_keyfile_symmetric";
inline constexpr const wchar_t* UsePublicKeyFile = L"use_keyfile_public_rsa";
inline constexpr const wchar_t* UseAlgorithmPrefix = L"use_alg_";
inline constexpr const wchar_t* UseDestinyPrefix = L"use_destiny_";
inline constexpr const wchar_t* UseRiddle = L"use_riddle";
/// Intended: the same text as `UseRiddle`, so that a job with a riddle and an extra text counts twice.
inline constexpr const wchar_t* UseExtraText = L"use_riddle";
inline constexpr const wchar_t* UseCustomSfxComment = L"use_custom_sfx_comment";

// Actions around the password window of a self-extracting encryption.
inline constexpr const wchar_t* OpenEncryptionPasswordWindow = L"domodal_encryptionpasswordwnd";
inline constexpr const wchar_t* EncryptionPasswordWindowCancelled = L"domodal_cancelled";
inline constexpr const wchar_t* SaveSfxComment = L"save_sfx_comment";

/// Action of both encryptions.
inline constexpr const wchar_t* CannotLoadKeyFile = L"err_cannot_load_key_file";

// Actions of the encryption password window.
inline constexpr const wchar_t* ClickOk = L"click_ok";
inline constexpr const wchar_t* ClickCancel = L"click_cancel";

// Actions of the delete and wipe job.
inline constexpr const wchar_t* UserCancelled = L"user_cancelled";
inline constexpr const wchar_t* UseOperationWipe = L"use_op_wipe";
inline constexpr const wchar_t* UseOperationDelete = L"use_op_delete";

// Actions of the file error window; the first one's label is the error text.
inline constexpr const wchar_t* FileError = L"err_file_error";
inline constexpr const wchar_t* SetUserActionTry = L"set_user_action_try";
inline constexpr const wchar_t* SetUserActionSkip = L"set_user_action_skip";
inline constexpr const wchar_t* SetUserActionAbort = L"set_user_action_abort";

// Actions of the steps of the double-click job.
inline constexpr const wchar_t* Execute = L"execute";
inline constexpr const wchar_t* Succeeded = L"succeeded";
inline constexpr const wchar_t* NotSucceeded = L"not_succeeded";
inline constexpr const wchar_t* UsedKeyFile = L"used_keyfile";
inline constexpr const wchar_t* UsedPassword = L"used_password";
inline constexpr const wchar_t* FileWasModified = L"file_was_modified";
inline constexpr const wchar_t* FileWasNotModified = L"file_was_not_modified";

// Actions and labels of a crash. Intended: the module is not named by the first one, it is the path of the view.
inline constexpr const wchar_t* CrashModule = L"crash_module";
inline constexpr const wchar_t* CrashModuleLabel = L"Crash in Module";
inline constexpr const wchar_t* CrashCodeLabel = L"Crash Code"; ///< under the name of the exception as the action
inline constexpr const wchar_t* CrashAddress = L"crash_address";
inline constexpr const wchar_t* CrashAddressLabel = L"Crash Address";

// Actions of the heart-beat, beside the tag of the module.
inline constexpr const wchar_t* HeartBeat = L"heartbeat";
inline constexpr const wchar_t* TelemetryDisabled = L"set_disabled_telemetry";

// Known words that nobody sends, kept for a new sender: no elapsed time is reported.
inline constexpr const wchar_t* SpentTimeSeconds = L"spent_time_seconds";
inline constexpr const wchar_t* Show = L"show";

} // namespace UsageEvent

} // namespace Halden::ZEL::Telemetry
