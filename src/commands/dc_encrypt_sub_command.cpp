#include "commands/dc_encrypt_sub_command.h"

#include "bridges/dc_encryptor_events_handler.h"
#include "bridges/dcd_progress_handler.h"
#include "commands/own_file_list.h"
#include "interfaces/vaultcore/encryptor.h"

#include <utility>

namespace JobRunner
{

using namespace Halden::ZEL::Telemetry;

namespace
{

/// Intended: AES-256, whatever the file was encrypted with before.
constexpr std::uint32_t ReencryptionAlgorithm = 3;

} // namespace

DcEncryptSubCommand::DcEncryptSubCommand(std::wstring file, std::wstring encryptedPath, std::wstring password,
                                         std::wstring keyFile, IGuiEvents* gui, EventTrackerPtr tracker)
    : EncryptCommand(gui, std::move(tracker)), keyFile_(std::move(keyFile)), password_(std::move(password)),
      file_(std::move(file)), encryptedPath_(std::move(encryptedPath))
{
    auto files = createOwnFileList(file_);
    handler_.reset();
    handler_ = std::make_unique<DcEncryptorEventsHandler>(&progress_, gui_);
    files_ = files.release();
}

DcEncryptSubCommand::~DcEncryptSubCommand()
{
    // Ahead of the strings and the members of the base.
    files_->Release();
}

void DcEncryptSubCommand::Run()
{
    EncryptCommand::Run();
}

bool DcEncryptSubCommand::succeeded() const
{
    const auto& handler = dynamic_cast<const DcEncryptorEventsHandler&>(*handler_);
    return dynamic_cast<const DcdProgressHandler&>(handler.progress()).lastFileSucceeded();
}

bool DcEncryptSubCommand::GetEncryptionParameters(std::wstring& password, std::wstring& keyFile,
                                                  std::uint32_t& algorithm, std::uint32_t& destiny,
                                                  std::wstring& riddle)
{
    password = password_;
    keyFile = keyFile_;
    algorithm = ReencryptionAlgorithm;
    destiny = VaultCore::DestinyWipe;
    riddle.clear();
    return true;
}

std::wstring DcEncryptSubCommand::GetExtraText()
{
    return L"";
}

} // namespace JobRunner
