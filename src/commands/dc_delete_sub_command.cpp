#include "commands/dc_delete_sub_command.h"

#include "bridges/dc_deleter_events_handler.h"
#include "bridges/dcd_progress_handler.h"
#include "commands/own_file_list.h"

#include <utility>

namespace JobRunner
{

using namespace Halden::ZEL::Telemetry;

DcDeleteSubCommand::DcDeleteSubCommand(std::wstring file, IGuiEvents* gui, EventTrackerPtr tracker)
    : DeleteCommand(gui, std::move(tracker)), file_(std::move(file))
{
    auto files = createOwnFileList(file_);
    method_ = VaultCore::DeletionMethodWipe;
    handler_.reset();
    handler_ = std::make_unique<DcDeleterEventsHandler>(&progress_, gui_);
    files_ = files.release();
}

DcDeleteSubCommand::~DcDeleteSubCommand()
{
    // Ahead of the string and the members of the base.
    files_->Release();
}

void DcDeleteSubCommand::Run()
{
    DeleteCommand::Run();
}

bool DcDeleteSubCommand::succeeded() const
{
    const auto& handler = dynamic_cast<const DcDeleterEventsHandler&>(*handler_);
    return dynamic_cast<const DcdProgressHandler&>(handler.progress()).lastFileSucceeded();
}

bool DcDeleteSubCommand::ConfirmDeletion()
{
    return true;
}

} // namespace JobRunner
