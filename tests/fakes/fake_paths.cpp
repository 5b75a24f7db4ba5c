#include "fakes/fake_paths.h"

#include "platform/path_text.h"

#include <algorithm>

namespace Fakes
{

namespace
{

constexpr std::size_t MaxPath = 260;
constexpr std::uint32_t ErrorNameTooLong = 206;

} // namespace

bool FakePaths::begin(const std::wstring& call, const std::wstring& arguments)
{
    const std::wstring words = call + L' ' + arguments;
    log_.add(words);
    if (onCall)
        onCall(words);
    auto failure = failures.find(words);
    if (failure == failures.end())
        failure = failures.find(call);
    if (failure == failures.end())
        return true;
    fail(failure->second);
    return false;
}

std::uint32_t FakePaths::fail(std::uint32_t error)
{
    handles_.setLastError(error);
    return 0;
}

std::map<std::wstring, FakePath>::iterator FakePaths::find(const std::wstring& path)
{
    const auto found = std::find_if(files.begin(), files.end(),
                                    [&](const auto& file)
                                    { return file.first == path || (!path.empty() && file.second.shortPath == path); });
    if (found == files.end())
        fail(Platform::ErrorFileNotFound);
    return found;
}

std::uint32_t FakePaths::give(const std::wstring& text, wchar_t* buffer, std::uint32_t size)
{
    const auto length = static_cast<std::uint32_t>(text.size());
    if (length >= size)
        return length + 1;
    std::copy_n(text.c_str(), length + 1, buffer);
    return length;
}

std::wstring FakePaths::programFileName(std::uint32_t size)
{
    if (program.size() < size)
        return program;
    fail(Platform::ErrorInsufficientBuffer);
    return program.substr(0, size > 0 ? size - 1 : 0);
}

std::wstring FakePaths::windowsDirectory(std::uint32_t size)
{
    return windows.size() < size ? windows : std::wstring();
}

bool FakePaths::canonicalize(const std::wstring& path, std::wstring& canonical)
{
    canonical.clear();
    if (path.size() >= MaxPath)
        return fail(ErrorNameTooLong) != 0;
    canonical = Platform::combinePathText(path, {}, L'\\');
    return true;
}

std::uint32_t FakePaths::longPathName(const std::wstring& path, wchar_t* buffer, std::uint32_t size)
{
    if (!begin(L"longPathName", path + L' ' + std::to_wstring(size)))
        return 0;
    const auto found = find(path);
    return found == files.end() ? 0 : give(found->first, buffer, size);
}

std::uint32_t FakePaths::shortPathName(const std::wstring& path, wchar_t* buffer, std::uint32_t size)
{
    if (!begin(L"shortPathName", path + L' ' + std::to_wstring(size)))
        return 0;
    const auto found = find(path);
    if (found == files.end())
        return 0;
    const std::wstring& shortPath = found->second.shortPath;
    return give(shortPath.empty() ? found->first : shortPath, buffer, size);
}

std::uint32_t FakePaths::queryDosDevice(const std::wstring& name, wchar_t* buffer, std::uint32_t size)
{
    if (!begin(L"queryDosDevice", name + L' ' + std::to_wstring(size)))
        return 0;
    const auto found = devices.find(name);
    if (found == devices.end())
        return fail(Platform::ErrorFileNotFound);
    std::wstring texts;
    for (const std::wstring& device : found->second)
        texts += device + L'\0';
    texts += L'\0';
    if (texts.size() > size)
        return fail(Platform::ErrorInsufficientBuffer);
    std::copy(texts.begin(), texts.end(), buffer);
    return static_cast<std::uint32_t>(texts.size());
}

std::uint32_t FakePaths::attributes(const std::wstring& path)
{
    if (!begin(L"attributes", path))
        return Platform::InvalidAttributes;
    const auto found = find(path);
    return found == files.end() ? Platform::InvalidAttributes : found->second.attributes;
}

bool FakePaths::setAttributes(const std::wstring& path, std::uint32_t attributes)
{
    if (!begin(L"setAttributes", path + L' ' + std::to_wstring(attributes)))
        return false;
    const auto found = find(path);
    if (found == files.end())
        return false;
    // What a file is cannot be changed, and it is normal while it is nothing else.
    const std::uint32_t kind = found->second.attributes & Platform::AttributeDirectory;
    const std::uint32_t others = attributes & ~(Platform::AttributeDirectory | Platform::AttributeNormal);
    const std::uint32_t all = kind | others;
    found->second.attributes = all == 0 ? Platform::AttributeNormal : all;
    return true;
}

} // namespace Fakes
