#pragma once

#include "vaultcore/file_system.h"

#include <cstddef>
#include <string>

namespace VaultCore
{

inline constexpr std::size_t TemporaryLetters = 8;

/// `name` with ".zel" behind it, the name of its encrypted file.
NativeText encryptedName(const NativeText& name);
/// Does the name end in ".zel", in whatever letters?
bool isEncryptedName(const NativeText& name);
/// The name without ".zel"; one without it gets something else behind it, so that it is never the same.
NativeText plainName(const NativeText& encrypted);

/// What the temporary names of one source file have in common: ".~NAME", where a long name is told by its digest.
NativeText temporaryStem(const NativeText& source);
/// `stem`, a dot, `letters`, ".zel-part".
NativeText temporaryName(const NativeText& stem, const std::string& letters);
/// The stem of a temporary name; empty for any other name.
NativeText stemOf(const NativeText& name);
inline bool isTemporaryName(const NativeText& name)
{
    return !stemOf(name).empty();
}

} // namespace VaultCore
