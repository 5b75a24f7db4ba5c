#pragma once

#include "vaultcore/container/container.h"

namespace VaultCore
{

[[noreturn]] inline void throwDamaged()
{
    throw ContainerFailure{ContainerFault::Damaged, L"The encrypted file is damaged or incomplete."};
}

[[noreturn]] inline void throwAbsurd(const std::wstring& message)
{
    throw ContainerFailure{ContainerFault::AbsurdParameters, message};
}

} // namespace VaultCore
