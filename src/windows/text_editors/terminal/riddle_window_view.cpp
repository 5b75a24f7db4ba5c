#include "windows/text_editors/terminal/riddle_window_view.h"

#include "windows/framework/terminal/terminal_dialog.h"

namespace JobRunner
{

bool RiddleWindowView::doModal()
{
    TerminalDialog dialog(terminal_);
    const std::optional<std::wstring> line = dialog.readLine(L"New riddle (Enter for none, Ctrl+D to leave it): ");
    if (line)
        text_ = *line;
    return line.has_value();
}

} // namespace JobRunner
