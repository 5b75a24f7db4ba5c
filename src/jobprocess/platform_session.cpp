#include "jobprocess/platform_session.h"

#include "bridges/module_factories.h"
#include "interfaces/panekit/controls.h"
#include "platform/modules.h"
#include "platform/platform.h"
#include "systemutilities/shell_utilities.h"
#include "windows/framework/view_factory.h"

#include <algorithm>

namespace JobRunner
{

namespace
{

using Halden::SystemUtilities::GetModuleFolder;
using Halden::SystemUtilities::ResolveRelativePath;
using Platform::platform;

const wchar_t* const ZelPlatformModule = L"zelplatform";
const wchar_t* const VaultCoreModule = L"vaultcore";
const wchar_t* const PanekitModule = L"panekit";

Platform::Modules& modules()
{
    return platform().modules;
}

template <class Function> Function find(void* module, const char* name)
{
    return reinterpret_cast<Function>(modules().findExport(module, name));
}

void* load(const std::wstring& folder, const wchar_t* module)
{
    return modules().load(modulePath(folder.c_str(), modules().moduleFileName(module)));
}

/// The paths below are written with backslashes and used with the separator of the system.
std::wstring native(std::wstring path)
{
    std::replace(path.begin(), path.end(), L'\\', platform().separator);
    return path;
}

/// Intended: "\Release" anywhere in the program's folder means the development layout, in an installed copy too.
bool isDevelopmentLayout(const std::wstring& applicationFolder)
{
    return applicationFolder.find(native(L"\\Release")) != std::wstring::npos;
}

std::wstring moduleFolder(const std::wstring& developmentFolder)
{
    std::wstring applicationFolder = GetModuleFolder(nullptr);
    if (!isDevelopmentLayout(applicationFolder))
        return applicationFolder;
    return ResolveRelativePath(native(L"..\\..\\source\\extlibs\\"), applicationFolder) + native(developmentFolder);
}

} // namespace

std::wstring modulePath(const wchar_t* folder, const std::wstring& fileName)
{
    std::wstring path = folder ? std::wstring(folder) : GetModuleFolder(nullptr);
    if (path.empty() || path.back() != platform().separator)
        path += platform().separator;
    return path + fileName;
}

bool PlatformSession::start()
{
    // Kept: the engine lies in "ReleasetU", the controls in "ReleaseU".
    const std::wstring engineFolder = moduleFolder(L"vaultcore\\lib\\win32\\ReleasetU\\");
    if (!startZelPlatform(engineFolder))
        return false;
    if (!startVaultCore(engineFolder))
    {
        endZelPlatform();
        return false;
    }
    // Intended: when the controls fail, the two modules before them stay started and nothing ends them.
    if (!startPanekit(moduleFolder(L"hoplib\\lib\\win32\\ReleaseU\\")))
        return false;
    started_ = true;
    return true;
}

bool PlatformSession::startZelPlatform(const std::wstring& engineFolder)
{
    zelPlatform_ = load(GetModuleFolder(nullptr), ZelPlatformModule);
    if (!zelPlatform_)
        return false;
    const auto initialize = find<ZelPlatform::InitializeFunction>(zelPlatform_, "initialize");
    if (initialize && initialize(engineFolder.c_str()))
    {
        if (const auto createFactory = find<ZelPlatform::CreateFactoryFunction>(zelPlatform_, "createFactory"))
        {
            setZelPlatformFactory(createFactory);
            return true;
        }
    }
    // Intended: unloaded without `uninitialize`, and the handle keeps its value.
    modules().unload(zelPlatform_);
    return false;
}

bool PlatformSession::startVaultCore(const std::wstring& engineFolder)
{
    vaultCore_ = load(engineFolder, VaultCoreModule);
    if (!vaultCore_)
        return false;
    const auto initialize = find<VaultCore::InitializeFunction>(vaultCore_, "initialize");
    // Intended: an engine that refuses to start stays loaded.
    if (initialize && initialize() == 0)
        return false;
    const auto createFactory =
        initialize ? find<VaultCore::CreateFactoryFunction>(vaultCore_, "createFactory") : nullptr;
    if (!createFactory)
    {
        modules().unload(vaultCore_);
        return false;
    }
    setVaultCoreFactory(createFactory);
    return true;
}

bool PlatformSession::startPanekit(const std::wstring& folder)
{
    if (modules().moduleFileName(PanekitModule).empty())
        return true; // a system whose views need no control module
    void* const panekit = load(folder, PanekitModule);
    if (!panekit)
        return false;
    const auto initialize = find<PanekitInitializeFunction>(panekit, "initialize");
    if (!initialize)
    {
        modules().unload(panekit);
        return false;
    }
    if (initialize(folder.c_str()) == 0)
        return false;
    setControlModule(panekit);
    return true;
}

void PlatformSession::end()
{
    if (!started_)
        return;
    // The engine goes first, so that the documents' module, which knows its folder, outlives it.
    if (vaultCore_)
    {
        find<VaultCore::UninitializeFunction>(vaultCore_, "uninitialize")();
        modules().unload(vaultCore_);
        vaultCore_ = nullptr;
    }
    endZelPlatform();
    if (void* const panekit = controlModule())
    {
        // Intended: the one export that may be missing; of the other two modules it is not looked at.
        if (const auto uninitialize = find<PanekitUninitializeFunction>(panekit, "uninitialize"))
            uninitialize();
        modules().unload(panekit);
        setControlModule(nullptr);
    }
    started_ = false;
}

void PlatformSession::endZelPlatform()
{
    find<ZelPlatform::UninitializeFunction>(zelPlatform_, "uninitialize")();
    modules().unload(zelPlatform_);
    zelPlatform_ = nullptr;
}

} // namespace JobRunner
