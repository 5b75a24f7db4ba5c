#pragma once

#include "vaultcore/file_system.h"
#include "vaultcore/package/package_names.h"

#include <map>
#include <string>
#include <utility>

namespace VaultCore
{

/// Gives the files of a job their names inside the package: the way from the entry's own folder on. What could not
/// stand there under its own name on every system gets another one: forbidden letters become '_', and of two names
/// that are the same the later one gets a number, "name (2).txt".
class PackageNaming
{
public:
    explicit PackageNaming(IFileSystem& files) : files_(files) {}

    /// UTF-8. A file is named once only; another call gives another name.
    std::string nameOfFile(const Place& file);

private:
    std::wstring folderOf(const Place& folder);
    std::wstring freeName(const std::wstring& folder, const NativeText& name, bool isFolder);

    IFileSystem& files_;
    PackageNames names_;
    /// By root and way below: what a folder is called in the package, with '/' behind it.
    std::map<std::pair<NativeText, NativeText>, std::wstring> folders_;
};

} // namespace VaultCore
