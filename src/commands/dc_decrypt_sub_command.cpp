#include "commands/dc_decrypt_sub_command.h"

#include "bridges/dc_decryptor_events_handler.h"
#include "bridges/dc_decryptor_password_provider.h"
#include "bridges/dcd_progress_handler.h"
#include "commands/own_file_list.h"

#include <utility>

namespace JobRunner
{

using namespace Halden::ZEL::Telemetry;

DcDecryptSubCommand::DcDecryptSubCommand(const std::wstring& file, IGuiEvents* gui, EventTrackerPtr tracker)
    : DecryptCommand(gui, std::move(tracker))
{
    mode_ = 0;
    auto files = createOwnFileList(file);
    handler_.reset();
    handler_ = std::make_unique<DcDecryptorEventsHandler>(&progress_, gui_);
    files_ = files.release();
}

DcDecryptSubCommand::~DcDecryptSubCommand()
{
    // Ahead of the members of the base.
    files_->Release();
}

void DcDecryptSubCommand::Run()
{
    DecryptCommand::Run();
}

bool DcDecryptSubCommand::succeeded() const
{
    return progress().lastFileSucceeded();
}

std::wstring DcDecryptSubCommand::lastFileText() const
{
    return progress().lastFileText();
}

bool DcDecryptSubCommand::usesKeyFile() const
{
    return !provider().keyFile().empty();
}

std::wstring DcDecryptSubCommand::keyFile() const
{
    return provider().keyFile();
}

std::wstring DcDecryptSubCommand::password() const
{
    return provider().password();
}

const DcDecryptorEventsHandler& DcDecryptSubCommand::handler() const
{
    return dynamic_cast<const DcDecryptorEventsHandler&>(*handler_);
}

const DcdProgressHandler& DcDecryptSubCommand::progress() const
{
    return dynamic_cast<const DcdProgressHandler&>(handler().progress());
}

const DcDecryptorPasswordProvider& DcDecryptSubCommand::provider() const
{
    return dynamic_cast<const DcDecryptorPasswordProvider&>(handler().provider());
}

} // namespace JobRunner
