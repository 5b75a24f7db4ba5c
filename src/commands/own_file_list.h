#pragma once

#include "interfaces/release_ptr.h"
#include "interfaces/vaultcore/file_list.h"

#include <string>

namespace JobRunner
{

/// A list of the engine with this one entry, for a command that has no document. Job thread.
ReleasePtr<VaultCore::IFileList> createOwnFileList(const std::wstring& file);

} // namespace JobRunner
