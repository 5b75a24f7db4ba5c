#include "bridges/file_conflict_events_handler.h"

#include "interfaces/process/gui_events.h"
#include "windows/progress/i_progress_window_view.h"
#include "windows/progress/progress_window.h"

namespace JobRunner
{

namespace
{

/// An answer that is none of the three repeats, as the first one does.
int actionFor(int answer)
{
    switch (answer)
    {
    case 1:
        return VaultCore::FileErrorSkip;
    case 2:
        return VaultCore::FileErrorAbort;
    default:
        return VaultCore::FileErrorRepeat;
    }
}

} // namespace

int FileConflictEventsHandler::OnFileConflict(std::uint32_t, std::uint32_t)
{
    return 0;
}

int FileConflictEventsHandler::OnFileError(const wchar_t* source, const wchar_t* target, const wchar_t* message)
{
    // Empty texts leave the window its own.
    const bool decrypting = operation_ == OperationDecrypt;
    const wchar_t* const title = decrypting ? L"File Problem" : L"";
    const wchar_t* const header =
        decrypting ? L"Please choose what to do with this problem. Repeat or abort operation, skip file." : L"";
    window_->hideWindow();
    const int answer = gui_->showFileErrorWindow(title, header, source, target, message);
    window_->showWindow();
    return actionFor(answer);
}

} // namespace JobRunner
