#include "fakes/fake_gui_events.h"

namespace Fakes
{

namespace
{

std::wstring textOf(const wchar_t* text)
{
    return text ? text : L"(null)";
}

constexpr int DecryptionCancelled = 2;
constexpr int FileErrorAborted = 2;

} // namespace

bool FakeGuiEvents::showEncryptionPasswordWindow(std::wstring& password, std::wstring& keyFile,
                                                 std::uint32_t& algorithm, std::uint32_t& destiny, std::wstring& riddle)
{
    log_->add(L"gui.showEncryptionPasswordWindow(" + std::to_wstring(algorithm) + L", " + std::to_wstring(destiny) +
              L")");
    const std::lock_guard guard(lock_);
    if (encryptionAnswers.empty())
        return false;
    const EncryptionAnswer answer = encryptionAnswers.front();
    encryptionAnswers.pop_front();
    password = answer.password;
    keyFile = answer.keyFile;
    algorithm = answer.algorithm;
    destiny = answer.destiny;
    riddle = answer.riddle;
    return true;
}

int FakeGuiEvents::showDecryptionPasswordWindow(const wchar_t* fileName, const wchar_t* passwordToFillIn,
                                                const wchar_t* keyFileToFillIn, std::uint32_t mode,
                                                JobRunner::IDpvKeyValidation* validator, std::wstring& password,
                                                std::wstring& keyFile)
{
    log_->add(L"gui.showDecryptionPasswordWindow");
    if (whileDecryptionPasswordIsShown)
        whileDecryptionPasswordIsShown();
    const std::lock_guard guard(lock_);
    decryptionQuestions_.push_back(
        {textOf(fileName), textOf(passwordToFillIn), textOf(keyFileToFillIn), mode, validator});
    if (decryptionAnswers.empty())
        return DecryptionCancelled;
    const DecryptionAnswer answer = decryptionAnswers.front();
    decryptionAnswers.pop_front();
    password = answer.password;
    keyFile = answer.keyFile;
    return answer.answer;
}

int FakeGuiEvents::showFileErrorWindow(const wchar_t* title, const wchar_t* header, const wchar_t* source,
                                       const wchar_t* target, const wchar_t* message)
{
    log_->add(L"gui.showFileErrorWindow");
    if (whileFileErrorIsShown)
        whileFileErrorIsShown();
    const std::lock_guard guard(lock_);
    fileErrors_.push_back({textOf(title), textOf(header), textOf(source), textOf(target), textOf(message)});
    if (fileErrorAnswers.empty())
        return FileErrorAborted;
    const int answer = fileErrorAnswers.front();
    fileErrorAnswers.pop_front();
    return answer;
}

void FakeGuiEvents::closeMessageWindow()
{
    log_->add(L"gui.closeMessageWindow");
}

std::vector<DecryptionQuestion> FakeGuiEvents::decryptionQuestions() const
{
    const std::lock_guard guard(lock_);
    return decryptionQuestions_;
}

std::vector<FileErrorQuestion> FakeGuiEvents::fileErrors() const
{
    const std::lock_guard guard(lock_);
    return fileErrors_;
}

} // namespace Fakes
