#pragma once

#include "oracle/files.h"

#include <memory>
#include <optional>
#include <string>

namespace VaultCore
{
class Key;
}

namespace Faults
{

/// The one key of all these tests, which takes no derivation, and the bytes of a file that holds it.
std::unique_ptr<VaultCore::Key> testedKey();
std::string testedKeyFile();

/// What is in an encrypted file; nothing unless it is whole to its last byte.
std::optional<std::string> opened(const std::string& encrypted);
/// What is in a package, by the names inside; nothing unless all of it is whole.
std::optional<Files> unpacked(const std::string& package);
// For the states before a job.

std::string sealed(const std::string& name, const std::string& content);
/// A package with a program that is none.
std::string packed(const Files& files);

} // namespace Faults
