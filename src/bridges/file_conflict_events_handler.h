#pragma once

#include "interfaces/vaultcore/events.h"

namespace JobRunner
{

class IGuiEvents;
class ProgressWindow;

/// Asks the user what becomes of a file that the engine cannot work on. Engine's threads; an engine thread stays
/// blocked until the user has answered.
class FileConflictEventsHandler final : public VaultCore::IFileConflictEvents
{
public:
    /// Neither is owned.
    FileConflictEventsHandler(ProgressWindow* window, IGuiEvents* gui) : window_(window), gui_(gui) {}

    /// The `ProgressOperation`, before the engine starts.
    void setOperation(int operation) { operation_ = operation; }

    int OnFileConflict(std::uint32_t first, std::uint32_t second) override;
    int OnFileError(const wchar_t* source, const wchar_t* target, const wchar_t* message) override;

private:
    int operation_ = 0;
    ProgressWindow* window_;
    IGuiEvents* gui_;
};

} // namespace JobRunner
