#include "commands/dc_open_sub_command.h"

#include "commands/watcher/open_document.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/platform.h"

#include <utility>

namespace JobRunner
{

using Platform::platform;

std::int64_t GetModificationTime(const std::wstring& path)
{
    std::int64_t seconds = 0;
    return platform().files.modificationTime(path, seconds) ? seconds : 0;
}

DcOpenSubCommand::DcOpenSubCommand(std::wstring path) : path_(std::move(path)) {}

DcOpenSubCommand::~DcOpenSubCommand() = default;

void DcOpenSubCommand::Execute()
{
    const std::int64_t before = GetModificationTime(path_);
    if (!OpenDocumentAndWait(path_))
    {
        platform().messageBoxes.show(L"Cannot open " + path_ +
                                         L". Possibly there is no known application associated with this type of file?",
                                     L"Cannot open decrypted file", Platform::BoxOk | Platform::BoxIconInformation);
        return;
    }
    const std::int64_t after = GetModificationTime(path_);
    opened_ = true;
    // Intended: whole seconds, and a difference in either direction: a save within the second of the decryption does
    // not count, a document that is gone does.
    modified_ = after != before;
}

} // namespace JobRunner
