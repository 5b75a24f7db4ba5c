#pragma once

#include "commands/delete_command.h"

#include <string>

namespace JobRunner
{

/// The step of the double-click job that wipes a document which was not changed. Asks nothing. Job thread.
class DcDeleteSubCommand final : public DeleteCommand
{
public:
    DcDeleteSubCommand(std::wstring file, IGuiEvents* gui, Halden::ZEL::Telemetry::EventTrackerPtr tracker);
    ~DcDeleteSubCommand() override;

    void Run() override;

    /// To be read after `Run`. True as well when the engine reported no file.
    bool succeeded() const;

protected:
    /// True: the user never sees this step as a decision.
    bool ConfirmDeletion() override;

private:
    std::wstring file_;
};

} // namespace JobRunner
