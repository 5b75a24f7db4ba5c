#pragma once

#include <string>

// What the process reports of whole jobs, one event a line, as src/telemetry/usage_events.h has the words.

namespace EndToEnd
{

inline const std::string Start = R"(
TrackView(jobrunner, JobRunner.exe)
TrackViewEvent(start_module, , none)
)";

/// The numbers at the end of a job, under the name of its category.
inline std::string results(const std::string& category, int processed, int failed, int megabytes)
{
    const std::string start = "TrackEvent(winzel " + category + " usage statistics, ";
    return start + "processed_file_count, , " + std::to_string(processed) + ")\n" + start + "failed_file_count, , " +
           std::to_string(failed) + ")\n" + start + "processed_total_size_mb, , " + std::to_string(megabytes) + ")\n";
}

inline const std::string Encryption = Start + R"(
TrackViewEvent(jobrunner, getxml_set_operation_encryption, none)
TrackView(jobrunner/encryption, Encryption Thread (JobRunner))
TrackView(jobrunner/encryption/passwordwnd, Enter Password Window)
)";

/// From the password window's end to the engine's start.
inline const std::string EncryptionByPassword = R"(
TrackViewEvent(click_ok, , none)
TrackView(jobrunner/encryption, Encryption Thread (JobRunner))
TrackEvent(winzel encryption usage statistics, count, , none)
TrackEvent(winzel encryption usage statistics, use_password, , none)
TrackEvent(winzel encryption usage statistics, use_alg_aes-256, , none)
)";

inline const std::string EncryptionCancelled = R"(
TrackViewEvent(click_cancel, , none)
TrackView(jobrunner/encryption, Encryption Thread (JobRunner))
)";

inline const std::string SfxEncryptionByPassword = Start + R"(
TrackViewEvent(jobrunner, getxml_set_operation_sfxencryption, none)
TrackView(jobrunner/encryption_sfx, Encryption SFX Thread (JobRunner))
TrackViewEvent(domodal_encryptionpasswordwnd, , none)
TrackView(jobrunner/encryption_sfx/passwordwnd, Enter Password Window)
TrackViewEvent(click_ok, , none)
TrackView(jobrunner/encryption_sfx, Encryption SFX Thread (JobRunner))
TrackEvent(winzel encryption usage statistics, use_password, , none)
TrackEvent(winzel encryption sfx usage statistics, use_alg_aes-256, , none)
TrackEvent(winzel encryption sfx usage statistics, use_destiny_delete, , none)
)";

inline const std::string Decryption = Start + R"(
TrackViewEvent(jobrunner, getxml_set_operation_decryption, none)
TrackView(jobrunner/decryption, Decryption Thread (JobRunner))
)";

inline const std::string Deletion = Start + R"(
TrackViewEvent(jobrunner, getxml_set_operation_wipe, none)
TrackView(jobrunner/wipe, Wipe Thread (JobRunner))
)";

inline const std::string DoubleClick = Start + R"(
TrackViewEvent(jobrunner, getxml_set_operation_dblclk_decryption, none)
TrackView(jobrunner/dblclk, Double Click File Thread (JobRunner))
TrackView(jobrunner/dblclk/decrypt, Decrypt (DblClk in JobRunner))
TrackViewEvent(execute, , none)
TrackView(jobrunner/decryption, Decryption Thread (JobRunner))
)";

} // namespace EndToEnd
