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

/// A user who answers from a script. Both password questions are cancelled. Safe on any thread once the script is
/// written.
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

    /// Answers to the file errors to come; 2 (abort) when there is none left.
    std::deque<int> fileErrorAnswers;
    /// Runs while a file error is asked, before the answer.
    std::function<void()> whileFileErrorIsShown;

    /// The names of the calls, in order.
    std::vector<std::wstring> calls() const { return log_->callsOf(L"gui."); }
    std::vector<FileErrorQuestion> fileErrors() const;

private:
    CallLog ownLog_;
    CallLog* log_ = &ownLog_;
    mutable std::mutex lock_;
    std::vector<FileErrorQuestion> fileErrors_;
};

} // namespace Fakes
