#include "bridges/dcd_progress_handler.h"

namespace JobRunner
{

void DcdProgressHandler::OnFileFinished(const void* file, const wchar_t* text, std::uint32_t error)
{
    ProgressEventsHandler::OnFileFinished(file, text, error);
    lastFileSucceeded_ = error == 0;
    lastFileText_ = text ? text : L"";
}

} // namespace JobRunner
