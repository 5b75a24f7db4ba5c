#pragma once

#include "bridges/progress_events_handler.h"

#include <string>

namespace JobRunner
{

/// Also keeps how the last file ended, for the steps of the double-click job, which work on one file each.
class DcdProgressHandler final : public ProgressEventsHandler
{
public:
    using ProgressEventsHandler::ProgressEventsHandler;

    void OnFileFinished(const void* file, const wchar_t* text, std::uint32_t error) override;

    /// True as well when no file was reported: a step without a file counts as succeeded.
    bool lastFileSucceeded() const { return lastFileSucceeded_; }
    /// The engine's text of the last file; empty when there was none.
    const std::wstring& lastFileText() const { return lastFileText_; }

private:
    bool lastFileSucceeded_ = true;
    std::wstring lastFileText_;
};

} // namespace JobRunner
