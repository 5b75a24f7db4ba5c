#pragma once

#include "fakes/fake_call_log.h"
#include "interfaces/process/gui_events.h"

#include <deque>
#include <functional>
#include <mutex>

namespace Fakes
{

/// The texts of one call of `showFileErrorWindow`. A null text reads "(null)".
struct FileErrorQuestion
{
    std::wstring title;
    std::wstring header;
    std::wstring source;
    std::wstring target;
    std::wstring message;

    bool operator==(const FileErrorQuestion&) const = default;
};

/// What a user confirms in the encryption password window.
struct EncryptionAnswer
{
    std::wstring password;
    std::wstring keyFile;
    std::uint32_t algorithm = 3;
    std::uint32_t destiny = 1;
    std::wstring riddle;
};

/// The arguments of one call of `showDecryptionPasswordWindow`. A null text reads "(null)".
struct DecryptionQuestion
{
    std::wstring file;
    std::wstring password;
    std::wstring keyFile;
    std::uint32_t mode = 0;
    JobRunner::IDpvKeyValidation* validator = nullptr;

    bool operator==(const DecryptionQuestion&) const = default;
};

/// What a user answers to it: 0 confirms, 1 ignores the file, 2 cancels. The texts reach the caller in any case.
struct DecryptionAnswer
{
    int answer = 0;
    std::wstring password;
    std::wstring keyFile;
};

/// A user who answers from a script, and who cancels a password question that the script says nothing of. Safe on any
/// thread once the script is written.
class FakeGuiEvents final : public JobRunner::IGuiEvents
{
public:
    FakeGuiEvents() = default;
    /// Writes its calls into a log of the test, which is not owned.
    explicit FakeGuiEvents(CallLog& log) : log_(&log) {}
    FakeGuiEvents(const FakeGuiEvents&) = delete;
    FakeGuiEvents& operator=(const FakeGuiEvents&) = delete;

    bool showEncryptionPasswordWindow(std::wstring& password, std::wstring& keyFile, std::uint32_t& algorithm,
                                      std::uint32_t& destiny, std::wstring& riddle) override;
    int showDecryptionPasswordWindow(const wchar_t* fileName, const wchar_t* passwordToFillIn,
                                     const wchar_t* keyFileToFillIn, std::uint32_t mode,
                                     JobRunner::IDpvKeyValidation* validator, std::wstring& password,
                                     std::wstring& keyFile) override;
    int showFileErrorWindow(const wchar_t* title, const wchar_t* header, const wchar_t* source, const wchar_t* target,
                            const wchar_t* message) override;
    void closeMessageWindow() override;

    /// Answers to the questions for a new password to come.
    std::deque<EncryptionAnswer> encryptionAnswers;
    /// Answers to the questions for the password of a file to come.
    std::deque<DecryptionAnswer> decryptionAnswers;
    /// Runs while such a question is asked, before the answer.
    std::function<void()> whileDecryptionPasswordIsShown;
    /// Answers to the file errors to come; 2 (abort) when there is none left.
    std::deque<int> fileErrorAnswers;
    /// Runs while a file error is asked, before the answer.
    std::function<void()> whileFileErrorIsShown;

    /// The calls by their names, in order. "gui.showEncryptionPasswordWindow(3, 1)" holds algorithm and destiny.
    std::vector<std::wstring> calls() const { return log_->callsOf(L"gui."); }
    std::vector<FileErrorQuestion> fileErrors() const;
    std::vector<DecryptionQuestion> decryptionQuestions() const;

private:
    CallLog ownLog_;
    CallLog* log_ = &ownLog_;
    mutable std::mutex lock_;
    std::vector<FileErrorQuestion> fileErrors_;
    std::vector<DecryptionQuestion> decryptionQuestions_;
};

} // namespace Fakes
