#pragma once

#include "vaultcore/key_search.h"
#include "vaultcore/package/package_files.h"
#include "vaultcore/package/package_unpacking.h"

#include <string>

namespace VaultCore
{

/// One package within a decryption job.
struct PackageWork
{
    /// Of the package, for the questions.
    std::wstring name;
    FileInfo info;
    /// For the results; it exists.
    Place folder;
    /// Reads each result back, because the package goes afterwards.
    bool readsBack = false;
};

/// Unpacks a package with the means of a decryption job. Each file in it that fails is asked about with its own target;
/// the others are unpacked all the same, and files that stand stay. Returns when all of them stand. Throws
/// `FileFailure` and `ContainerFailure`: `Cancelled`, `Skipped` when one or more were given up, or what the package
/// itself suffers. A target that exists fails.
void decryptPackage(IReadFile& file, const PackageWork& work, IFileSystem& files, KeySearch& keys, JobReports& reports);

} // namespace VaultCore
