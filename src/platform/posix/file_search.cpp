#include "platform/posix/file_search.h"

#include "platform/path_text.h"
#include "platform/utf8.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <memory>

namespace Platform
{

namespace
{

constexpr wchar_t Everything[] = L"*";

bool isThere(const std::string& path)
{
    struct stat status
    {
    };
    return lstat(path.c_str(), &status) == 0;
}

FoundFile found(const std::string& folder, const std::string& name)
{
    struct stat status
    {
    };
    const bool isFolder = stat((folder + name).c_str(), &status) == 0 && S_ISDIR(status.st_mode);
    return {fromUtf8(name), isFolder ? AttributeDirectory : 0};
}

} // namespace

std::vector<FoundFile> filesLike(const std::wstring& pattern)
{
    const std::size_t nameStart = pattern.rfind(L'/') + 1;
    const std::wstring wanted = pattern.substr(nameStart);
    const std::string folder = toUtf8(pattern.substr(0, nameStart));
    if (wanted.empty())
        return {};
    if (wanted != Everything && isThere(folder + toUtf8(wanted)))
        return {found(folder, toUtf8(wanted))};
    if (wanted.find_first_of(L"*?") == std::wstring::npos)
        return {};

    std::vector<FoundFile> files;
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(opendir(folder.empty() ? "." : folder.c_str()), closedir);
    while (const dirent* const entry = directory ? readdir(directory.get()) : nullptr)
        if (matchesPatternText(fromUtf8(entry->d_name), wanted))
            files.push_back(found(folder, entry->d_name));
    std::sort(files.begin(), files.end(),
              [](const FoundFile& one, const FoundFile& other) { return one.name < other.name; });
    return files;
}

} // namespace Platform
