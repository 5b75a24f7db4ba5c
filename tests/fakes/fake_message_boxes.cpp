#include "fakes/fake_message_boxes.h"

namespace Fakes
{

void FakeMessageBoxes::answer(int answer)
{
    const std::lock_guard guard(lock_);
    answers_.push_back(answer);
}

std::vector<ShownBox> FakeMessageBoxes::boxes() const
{
    const std::lock_guard guard(lock_);
    return boxes_;
}

int FakeMessageBoxes::show(const std::wstring& text, const std::wstring& caption, std::uint32_t flags)
{
    log_.add(L"messageBox " + text);
    if (whileShown)
        whileShown();
    const std::lock_guard guard(lock_);
    boxes_.push_back({text, caption, flags});
    if (answers_.empty())
        return flags & Platform::BoxYesNo ? Platform::BoxAnswerNo : Platform::BoxAnswerOk;
    const int answer = answers_.front();
    answers_.pop_front();
    return answer;
}

} // namespace Fakes
