#pragma once

#include "vaultcore/container/bytes.h"
#include "vaultcore/container/secure_bytes.h"

#include <string>

namespace VaultCore
{

enum class SmallFileKind
{
    Content,
    Folder,
    /// A device or a pipe.
    NoPlainFile,
    TooLarge,
};

struct SmallFile
{
    SmallFileKind kind = SmallFileKind::Content;
    SecureBytes content;
};

/// Reads a file of at most `limit` bytes; anything else is told by its kind and not read. Links are followed. Throws
/// `FileFailure` for what the system refuses.
SmallFile readSmallFile(const std::wstring& path, std::size_t limit);
/// Makes a file, on Linux for its owner only, and never replaces one: `NameTaken`. Throws `FileFailure` and then leaves
/// nothing behind.
void writeSecretFile(const std::wstring& path, ByteView bytes);

} // namespace VaultCore
