#pragma once

#include "vaultcore/container/bytes.h"
#include "vaultcore/container/secure_bytes.h"

#include <optional>
#include <string_view>

// The padding of RSAES-OAEP (RFC 8017) with SHA-256 for hash and mask. libgcrypt has it too, and leaves copies of what
// it pads in memory that it does not wipe.

namespace VaultCore
{

/// A block of `size` bytes for the RSA operation, never the same twice. Throws `FileFailure` for a secret that does not
/// fit into it.
SecureBytes padForRsa(const SecureBytes& secret, std::string_view label, std::size_t size);
/// The secret of a block; nothing when the block was not made with this label.
std::optional<SecureBytes> unpadFromRsa(const SecureBytes& block, std::string_view label);

} // namespace VaultCore
