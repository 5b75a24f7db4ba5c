#pragma once

namespace VaultCore
{

/// Prepares libgcrypt once for the process. False when the library at hand is too old. Any thread.
bool prepareCryptoLibrary();

} // namespace VaultCore
