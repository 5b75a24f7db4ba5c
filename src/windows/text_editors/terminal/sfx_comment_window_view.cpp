#include "windows/text_editors/terminal/sfx_comment_window_view.h"

#include "windows/framework/terminal/terminal_dialog.h"

namespace JobRunner
{

namespace
{

/// Nothing at the end of the input.
std::optional<std::wstring> readLines(TerminalDialog& dialog)
{
    std::wstring text;
    while (const std::optional<std::wstring> line = dialog.readLine(L"> "))
    {
        if (line->empty())
            return text;
        text += (text.empty() ? L"" : L"\n") + *line;
    }
    return std::nullopt;
}

} // namespace

bool SfxCommentWindowView::doModal()
{
    TerminalDialog dialog(terminal_);
    if (!text_.empty())
        dialog.print(text_);
    dialog.print(L"New Sfx Comment (an empty line ends it, Ctrl+D leaves it as it was):");
    const std::optional<std::wstring> text = readLines(dialog);
    if (!text)
        return false;
    const std::optional<wchar_t> answer = dialog.choose(L"Set Default? [y/n] ", L"yn", L'n');
    if (!answer)
        return false;
    setDefault_ = answer == L'y';
    text_ = *text;
    return true;
}

} // namespace JobRunner
