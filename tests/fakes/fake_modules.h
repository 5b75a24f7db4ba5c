#pragma once

#include "fakes/fake_call_log.h"
#include "platform/modules.h"

#include <map>
#include <string>

namespace Fakes
{

/// Modules that exist at the full paths that a test gives. Logs "load PATH", "unload PATH", "findExport PATH NAME".
class FakeModules : public Platform::Modules
{
public:
    explicit FakeModules(CallLog& log) : log_(log) {}

    /// The module exists and can be loaded, without exports.
    void add(const std::wstring& fullPath) { modules_[fullPath]; }
    /// Adds the module too, when it is not there.
    void addExport(const std::wstring& fullPath, const std::string& name, void* address);
    template <class Result, class... Arguments>
    void addExport(const std::wstring& fullPath, const std::string& name, Result (*function)(Arguments...))
    {
        addExport(fullPath, name, reinterpret_cast<void*>(function));
    }
    /// The module is no longer there to be loaded. It must not be loaded at that time.
    void remove(const std::wstring& fullPath) { modules_.erase(fullPath); }
    /// How often the module was loaded and not unloaded again.
    int loadCount(const std::wstring& fullPath) const;

    Platform::ModuleHandle load(const std::wstring& fullPath) override;
    void* findExport(Platform::ModuleHandle module, const char* name) override;
    void unload(Platform::ModuleHandle module) override;
    std::wstring fileName(Platform::ModuleHandle module) override;
    std::wstring moduleFileName(const std::wstring& name) override { return name + extension; }

    std::wstring programFileName = L"C:\\Suite\\bin\\JobRunner.exe";
    std::wstring extension = L".dll";

private:
    struct Module
    {
        std::map<std::string, void*> exports;
        int loads = 0;
    };
    using Entry = std::pair<const std::wstring, Module>;
    /// The loaded module behind a handle, or null.
    Entry* loaded(Platform::ModuleHandle module);

    CallLog& log_;
    std::map<std::wstring, Module> modules_;
};

} // namespace Fakes
