#include "schedules/staged_dialogs.h"

#include "platform/messages.h"
#include "platform/platform.h"
#include "platform/threads.h"

namespace Schedules
{

using namespace JobRunner;
using Platform::platform;

namespace
{

constexpr std::uint32_t MessageAnswer = 1;
const std::wstring DialogClass = L"StagedDialog";

} // namespace

/// A modal loop: a window of its own takes the answer and ends it.
class StagedDialogs::Loop final : public Platform::WindowProcedure
{
public:
    explicit Loop(Prompt& prompt) : prompt_(prompt)
    {
        platform().messages.registerClass(DialogClass);
        prompt_.window = platform().messages.createWindow(DialogClass, L"", *this);
    }
    ~Loop() { platform().messages.destroyWindow(prompt_.window); }
    Loop(const Loop&) = delete;
    Loop& operator=(const Loop&) = delete;

    int run()
    {
        while (!prompt_.answered)
            platform().messages.runLoop();
        return prompt_.answer;
    }

    std::intptr_t onMessage(Platform::WindowHandle, std::uint32_t message, std::uintptr_t answer,
                            std::intptr_t) override
    {
        if (message != MessageAnswer)
            return 0;
        prompt_.answer = static_cast<int>(answer);
        prompt_.answered = true;
        platform().messages.postQuit();
        return 0;
    }

private:
    Prompt& prompt_;
};

StagedDialogs::StagedDialogs(Desk& desk, Record& record, bool withLoop)
    : desk_(desk), record_(record), withLoop_(withLoop), firstThread_(platform().threads.currentThreadId())
{
}

bool StagedDialogs::showEncryptionPassword(EncryptionPasswordRequest& request)
{
    if (ask(Prompt::Kind::EncryptionPassword, L"") != 0)
        return false;
    request.password = RightPassword;
    return true;
}

int StagedDialogs::showDecryptionPassword(DecryptionPasswordRequest& request)
{
    const int answer = ask(Prompt::Kind::DecryptionPassword, request.fileName);
    if (answer != AnswerRightPassword && answer != AnswerWrongPassword)
        return answer;
    request.passwordOut = answer == AnswerRightPassword ? RightPassword : WrongPassword;
    return 0; // confirmed
}

int StagedDialogs::showFileError(const FileErrorRequest& request)
{
    return ask(Prompt::Kind::FileError, request.source);
}

int StagedDialogs::ask(Prompt::Kind kind, const std::wstring& file)
{
    record_.complaints.addUnless(platform().threads.currentThreadId() == firstThread_,
                                 "a dialog on another thread than the first");
    const auto prompt = std::make_shared<Prompt>(Prompt{kind, file});
    ++record_.openPrompts;
    int answer = 0;
    if (withLoop_)
    {
        Loop loop(*prompt);
        inLoops_.push_back(prompt);
        desk_.promptCame(prompt);
        answer = loop.run();
        std::erase(inLoops_, prompt);
    }
    else
    {
        desk_.promptCame(prompt);
        answer = desk_.awaitAnswer(*prompt);
    }
    desk_.promptWent(prompt);
    // An outer dialog may have been answered meanwhile, and it was this loop that the answer has ended.
    if (!inLoops_.empty() && inLoops_.back()->answered)
        platform().messages.postQuit();
    --record_.openPrompts;
    return answer;
}

int StagedBoxes::show(const std::wstring&, const std::wstring&, std::uint32_t)
{
    const auto prompt = std::make_shared<Prompt>(Prompt{Prompt::Kind::Deletion, L""});
    desk_.promptCame(prompt);
    const int answer = desk_.awaitAnswer(*prompt);
    desk_.promptWent(prompt);
    return answer;
}

void answerPrompt(Desk& desk, Prompt& prompt, int answer)
{
    if (prompt.window)
        platform().messages.send(prompt.window, MessageAnswer, static_cast<std::uintptr_t>(answer), 0);
    else
        desk.answer(prompt, answer);
}

} // namespace Schedules
