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

bool FakeGuiEvents::showEncryptionPasswordWindow(std::wstring&, std::wstring&, std::uint32_t&, std::uint32_t&,
                                                 std::wstring&)
{
    log_->add(L"gui.showEncryptionPasswordWindow");
    return false;
}

int FakeGuiEvents::showDecryptionPasswordWindow(const wchar_t*, const wchar_t*, const wchar_t*, std::uint32_t,
                                                JobRunner::IDpvKeyValidation*, std::wstring&, std::wstring&)
{
    log_->add(L"gui.showDecryptionPasswordWindow");
    return DecryptionCancelled;
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

std::vector<FileErrorQuestion> FakeGuiEvents::fileErrors() const
{
    const std::lock_guard guard(lock_);
    return fileErrors_;
}

} // namespace Fakes
