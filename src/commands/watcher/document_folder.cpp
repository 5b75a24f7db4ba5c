#include "commands/watcher/document_folder.h"

#include "platform/files.h"
#include "platform/platform.h"

#include <functional>
#include <optional>

namespace JobRunner
{

namespace
{

using Platform::FoundFile;

Platform::Files& files()
{
    return Platform::platform().files;
}

/// Nothing when there is no match at all, or no folder.
std::optional<int> countMatches(const std::wstring& pattern, const std::function<bool(const FoundFile&)>& counts)
{
    FoundFile found;
    const Platform::Handle search = files().findFirst(pattern, found);
    if (search == Platform::InvalidHandle)
        return std::nullopt;
    int count = 0;
    do
        count += counts(found) ? 1 : 0;
    while (files().findNext(search, found));
    files().findClose(search);
    return count;
}

bool isFile(const FoundFile& found)
{
    return (found.attributes & Platform::AttributeDirectory) == 0;
}

bool matters(const FoundFile& found)
{
    return found.name != L"." && found.name != L".." && !IsWorkFile(found.name);
}

} // namespace

bool IsDocumentAlone(const std::wstring& file)
{
    const std::optional<int> documents = countMatches(file, isFile);
    if (!documents)
        return false;
    const std::wstring all = files().append(files().removeFileSpec(file), L"*");
    // Intended: folders count here and not above, so that a document beside a folder is not alone.
    return documents == countMatches(all, matters);
}

bool IsWorkFile(const std::wstring& file)
{
    const std::wstring name = files().fileName(file);
    return files().matches(name, L"*.tmp") || files().matches(name, L"*.bak") || files().matches(name, L"~*.*");
}

} // namespace JobRunner
