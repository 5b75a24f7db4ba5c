#include "windows/framework/terminal/terminal_dialog.h"

#include "platform/posix/terminal_text.h"

#include <cwctype>

namespace JobRunner
{

void TerminalDialog::printLine(const std::wstring& text)
{
    print(Platform::displayLine(text));
}

std::optional<wchar_t> TerminalDialog::choose(const std::wstring& question, const std::wstring& letters,
                                              wchar_t byDefault)
{
    while (const std::optional<std::wstring> line = readLine(question))
    {
        if (line->empty())
            return byDefault;
        const auto letter = static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(line->front())));
        if (line->size() == 1 && letters.find(letter) != std::wstring::npos)
            return letter;
    }
    return std::nullopt;
}

} // namespace JobRunner
