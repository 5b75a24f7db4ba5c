#pragma once

#include "fakes/fake_call_log.h"
#include "platform/message_box.h"

#include <deque>
#include <functional>
#include <mutex>
#include <vector>

namespace Fakes
{

struct ShownBox
{
    std::wstring text;
    std::wstring caption;
    std::uint32_t flags = 0;

    bool operator==(const ShownBox&) const = default;
};

/// Records the boxes and answers them at once. Logs "messageBox TEXT".
class FakeMessageBoxes : public Platform::MessageBoxes
{
public:
    explicit FakeMessageBoxes(CallLog& log) : log_(log) {}

    /// The answer of the next box that has none yet. Without one a question is answered no, any other box OK.
    void answer(int answer);
    std::vector<ShownBox> boxes() const;

    /// Runs while a box is shown, on the thread that shows it.
    std::function<void()> whileShown;

    int show(const std::wstring& text, const std::wstring& caption, std::uint32_t flags) override;

private:
    CallLog& log_;
    mutable std::mutex lock_;
    std::deque<int> answers_;
    std::vector<ShownBox> boxes_;
};

} // namespace Fakes
