#pragma once

#include <string>

namespace VaultCore
{

/// Path of the program that packages begin with: "package.stub" in the folder of this module.
std::wstring packageProgram();

} // namespace VaultCore
