#pragma once

#include "vaultcore/container/container.h"

namespace VaultCore
{

[[noreturn]] inline void throwDamagedPackage(const std::wstring& reason)
{
    throw ContainerFailure{ContainerFault::Damaged, L"The package is damaged or incomplete: " + reason + L"."};
}

[[noreturn]] inline void throwAbsurdPackage(const std::wstring& reason)
{
    throw ContainerFailure{ContainerFault::AbsurdParameters, L"The package goes beyond the limits: " + reason + L"."};
}

} // namespace VaultCore
