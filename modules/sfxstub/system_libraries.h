#pragma once

#include <windows.h>

namespace SfxStub
{

/// First of all: from here on libraries come from the system's folder alone. The program is often started from a folder
/// of downloads, where anybody may have put one.
void keepForeignLibrariesOut();

/// A library of the system; null when there is none. It stays loaded.
HMODULE loadSystemLibrary(const wchar_t* name);

template <class Function> Function* systemFunction(const wchar_t* library, const char* name)
{
    const HMODULE module = loadSystemLibrary(library);
    if (module == nullptr)
        return nullptr;
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

} // namespace SfxStub
