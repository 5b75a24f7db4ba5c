#include "fakes/fake_modules.h"

namespace Fakes
{

void FakeModules::addExport(const std::wstring& fullPath, const std::string& name, void* address)
{
    modules_[fullPath].exports[name] = address;
}

int FakeModules::loadCount(const std::wstring& fullPath) const
{
    const auto found = modules_.find(fullPath);
    return found == modules_.end() ? 0 : found->second.loads;
}

Platform::ModuleHandle FakeModules::load(const std::wstring& fullPath)
{
    log_.add(L"load " + fullPath);
    const auto found = modules_.find(fullPath);
    if (found == modules_.end())
        return nullptr;
    ++found->second.loads;
    return &*found;
}

void* FakeModules::findExport(Platform::ModuleHandle module, const char* name)
{
    const Entry* entry = loaded(module);
    const std::string exportName(name);
    log_.add(L"findExport " + (entry ? entry->first : L"?") + L' ' +
             std::wstring(exportName.begin(), exportName.end()));
    if (!entry)
        return nullptr;
    const auto found = entry->second.exports.find(exportName);
    return found == entry->second.exports.end() ? nullptr : found->second;
}

void FakeModules::unload(Platform::ModuleHandle module)
{
    Entry* entry = loaded(module);
    log_.add(L"unload " + (entry ? entry->first : L"?"));
    if (entry)
        --entry->second.loads;
}

std::wstring FakeModules::fileName(Platform::ModuleHandle module)
{
    if (!module)
        return programFileName;
    const Entry* entry = loaded(module);
    return entry ? entry->first : std::wstring();
}

FakeModules::Entry* FakeModules::loaded(Platform::ModuleHandle module)
{
    for (Entry& entry : modules_)
        if (&entry == module && entry.second.loads > 0)
            return &entry;
    return nullptr;
}

} // namespace Fakes
