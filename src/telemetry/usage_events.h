#pragma once

/// The words of the usage reports. Each is defined once, here; every text goes out as it stands.
namespace Halden::ZEL::Telemetry
{

/// First segment of the path of every view.
inline constexpr const wchar_t* ProcessTag = L"jobrunner";
/// Title of the first view.
inline constexpr const wchar_t* ProcessTitle = L"JobRunner.exe";

namespace UsageCategory
{
inline constexpr const wchar_t* Encryption = L"winzel encryption usage statistics";
inline constexpr const wchar_t* Wipe = L"winzel wipe usage statistics";
} // namespace UsageCategory

/// Second path segments and titles of the views.
namespace UsageView
{
inline constexpr const wchar_t* Wipe = L"wipe";
inline constexpr const wchar_t* WipeTitle = L"Wipe Thread (JobRunner)";
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

// Actions of the delete and wipe job.
inline constexpr const wchar_t* UserCancelled = L"user_cancelled";
inline constexpr const wchar_t* UseOperationWipe = L"use_op_wipe";
inline constexpr const wchar_t* UseOperationDelete = L"use_op_delete";

// Actions of the file error window; the first one's label is the error text.
inline constexpr const wchar_t* FileError = L"err_file_error";
inline constexpr const wchar_t* SetUserActionTry = L"set_user_action_try";
inline constexpr const wchar_t* SetUserActionSkip = L"set_user_action_skip";
inline constexpr const wchar_t* SetUserActionAbort = L"set_user_action_abort";

} // namespace UsageEvent

} // namespace Halden::ZEL::Telemetry
