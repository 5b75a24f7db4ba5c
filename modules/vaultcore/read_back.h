#pragma once

#include "vaultcore/content_digest.h"
#include "vaultcore/file_system.h"

#include <cstdint>
#include <functional>

namespace VaultCore
{

/// Bytes that were read back; throws to stop. Not called for the end.
using ReadBackProgress = std::function<void(std::uint64_t done)>;

/// Reads a published result under its final name, from the device as far as the system lets itself be told. Throws
/// `ResultDiffers` when it is not what was published or its content does not give `content`, and what the system
/// refuses.
void readBack(IFileSystem& files, const Place& result, const FileInfo& published, ContentDigest& content,
              const ReadBackProgress& progress);

} // namespace VaultCore
