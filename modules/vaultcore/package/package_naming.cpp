#include "vaultcore/package/package_naming.h"

#include "platform/utf8.h"

namespace VaultCore
{
namespace
{

std::wstring numbered(const std::wstring& name, int number, bool isFolder)
{
    const std::wstring addition = L" (" + std::to_wstring(number) + L")";
    const std::size_t dot = isFolder ? std::wstring::npos : name.rfind(L'.');
    if (dot == std::wstring::npos || dot == 0)
        return name + addition;
    return name.substr(0, dot) + addition + name.substr(dot);
}

} // namespace

std::string PackageNaming::nameOfFile(const Place& file)
{
    const std::wstring name = freeName(folderOf(parentOf(file)), VaultCore::nameOf(file), false);
    names_.addFile(name);
    return Platform::toUtf8(name);
}

std::wstring PackageNaming::folderOf(const Place& folder)
{
    if (folder.below.empty())
        return {};
    const auto key = std::pair(folder.root, folder.below);
    const auto known = folders_.find(key);
    if (known != folders_.end())
        return known->second;
    const std::wstring name = freeName(folderOf(parentOf(folder)), VaultCore::nameOf(folder), true);
    names_.addFolder(name);
    return folders_.emplace(key, name + L'/').first->second;
}

std::wstring PackageNaming::freeName(const std::wstring& folder, const NativeText& name, bool isFolder)
{
    const std::wstring part = packageNamePart(files_.displayName(name));
    std::wstring result = folder + part;
    for (int number = 2; names_.hasFile(result) || names_.hasFolder(result); ++number)
        result = folder + numbered(part, number, isFolder);
    return result;
}

} // namespace VaultCore
