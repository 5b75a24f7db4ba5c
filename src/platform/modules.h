#pragma once

#include <string>

namespace Platform
{

using ModuleHandle = void*;

/// Loading of modules. First thread only, but for `findExport`, which is safe on any thread.
class Modules
{
public:
    virtual ~Modules() = default;
    /// `LoadLibraryW` with a full path. Null when the module does not load; the caller unloads it.
    virtual ModuleHandle load(const std::wstring& fullPath) = 0;
    /// `GetProcAddress`. Null when the module has no export of that name.
    virtual void* findExport(ModuleHandle module, const char* name) = 0;
    /// `FreeLibrary`.
    virtual void unload(ModuleHandle module) = 0;
    /// `GetModuleFileNameW` with a buffer of 1024 characters; null means the running program. Empty on failure.
    virtual std::wstring fileName(ModuleHandle module) = 0;
    /// File name of a module of the suite on this system, from its name without an extension. Empty where this
    /// system has no such module.
    virtual std::wstring moduleFileName(const std::wstring& name) = 0;
};

} // namespace Platform
