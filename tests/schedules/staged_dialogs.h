#pragma once

#include "jobprocess/modal_dialogs.h"
#include "platform/message_box.h"
#include "schedules/desk.h"
#include "schedules/record.h"

#include <cstdint>

namespace Schedules
{

// Answers of the question for a decryption password, beside the window's own 1 (ignore) and 2 (cancel).
inline constexpr int AnswerRightPassword = 0;
inline constexpr int AnswerWrongPassword = 10;
inline constexpr const wchar_t* RightPassword = L"right";
inline constexpr const wchar_t* WrongPassword = L"wrong";

/// The dialogs of the first thread, which put their question on the desk. With a loop of their own they let the first
/// thread open further dialogs meanwhile, as those of a window system do; without one the next question waits, as in a
/// terminal.
class StagedDialogs final : public JobRunner::IModalDialogs
{
public:
    StagedDialogs(Desk& desk, Record& record, bool withLoop);

    bool showEncryptionPassword(JobRunner::EncryptionPasswordRequest& request) override;
    int showDecryptionPassword(JobRunner::DecryptionPasswordRequest& request) override;
    int showFileError(const JobRunner::FileErrorRequest& request) override;

private:
    class Loop;
    int ask(Prompt::Kind kind, const std::wstring& file);

    Desk& desk_;
    Record& record_;
    const bool withLoop_;
    std::uint32_t firstThread_;
    std::vector<std::shared_ptr<Prompt>> inLoops_; ///< the outermost first; first thread only
};

/// The question of a deletion, on the thread that asks it.
class StagedBoxes final : public Platform::MessageBoxes
{
public:
    explicit StagedBoxes(Desk& desk) : desk_(desk) {}
    int show(const std::wstring& text, const std::wstring& caption, std::uint32_t flags) override;

private:
    Desk& desk_;
};

/// Answers a prompt that the caller has claimed; blocks until the dialog has taken the answer.
void answerPrompt(Desk& desk, Prompt& prompt, int answer);

} // namespace Schedules
