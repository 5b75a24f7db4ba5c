#include "platform/posix/concerns.h"
#include "platform/posix/crash_reporter.h"
#include "platform/posix/terminal.h"

#include <algorithm>

namespace Platform
{

namespace
{

constexpr std::uint32_t ButtonsMask = 0x0F;

std::wstring lowerCase(std::wstring text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](wchar_t character)
                   { return character >= L'A' && character <= L'Z' ? wchar_t(character + (L'a' - L'A')) : character; });
    return text;
}

int askYesNo(Terminal::Prompt& prompt)
{
    while (true)
    {
        const std::optional<std::wstring> line = prompt.readLine(L"[y/n] ");
        if (!line)
            return BoxAnswerNo;
        const std::wstring answer = lowerCase(*line);
        if (answer == L"y" || answer == L"yes")
            return BoxAnswerYes;
        if (answer == L"n" || answer == L"no")
            return BoxAnswerNo;
    }
}

class TerminalMessageBoxes : public MessageBoxes
{
public:
    explicit TerminalMessageBoxes(Terminal& terminal) : terminal_(terminal) {}

    int show(const std::wstring& text, const std::wstring& caption, std::uint32_t flags) override
    {
        Terminal::Prompt prompt(terminal_);
        prompt.print(caption + L'\n' + text + L'\n');
        noteShownBox();
        if ((flags & ButtonsMask) == BoxYesNo)
            return askYesNo(prompt);
        static_cast<void>(prompt.readLine(L"Press Enter to continue "));
        return BoxAnswerOk;
    }

private:
    Terminal& terminal_;
};

} // namespace

std::unique_ptr<MessageBoxes> terminalMessageBoxes(Terminal& terminal)
{
    return std::make_unique<TerminalMessageBoxes>(terminal);
}

MessageBoxes& posixMessageBoxes()
{
    static TerminalMessageBoxes boxes(terminal());
    return boxes;
}

} // namespace Platform
