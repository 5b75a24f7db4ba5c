#pragma once

#include <cstddef>

namespace VaultCore
{

/// Memory pages for a secret, locked where the system allows it. Null when there is no memory. `size` is not 0.
void* takeSecretPages(std::size_t size);
/// Gives them back; the caller has wiped them.
void giveSecretPages(void* pages, std::size_t size);

} // namespace VaultCore
