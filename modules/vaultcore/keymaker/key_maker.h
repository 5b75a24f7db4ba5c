#pragma once

#include "vaultcore/container/rsa.h"

#include <string>
#include <vector>

namespace VaultCore
{

/// Carries out the arguments of `make_key`, without the program's name, and tells the exit code: 0 when all key files
/// were made. `message` is what the user is told. No file is ever replaced. `modulusSize` is that of an RSA key, in
/// bytes.
int makeKeys(const std::vector<std::wstring>& arguments, std::wstring& message,
             std::size_t modulusSize = RsaLargeModulus);

} // namespace VaultCore
