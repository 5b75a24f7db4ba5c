#pragma once

#include "interfaces/vaultcore/factory.h"

namespace EndToEnd
{

/// The engine behind `createFactory`, but for the text at the end of a decrypted file, which is always empty. One
/// engine at a time.
VaultCore::CreateFactoryFunction withoutWords(VaultCore::CreateFactoryFunction createFactory);

} // namespace EndToEnd
