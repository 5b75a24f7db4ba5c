#pragma once

#include <string>

namespace JobRunner
{

/// Finds, loads and starts the modules of the suite, and stops and unloads them. First thread only, while no other
/// thread of the process exists.
class PlatformSession
{
public:
    PlatformSession() = default;
    PlatformSession(const PlatformSession&) = delete;
    PlatformSession& operator=(const PlatformSession&) = delete;
    /// Ends the session.
    ~PlatformSession() { end(); }

    /// Starts all modules. False as soon as one fails; what then stays loaded differs on purpose, see the source.
    bool start();
    /// Unloads everything, the engine first. Does nothing unless the session has started.
    void end();

private:
    bool startZelPlatform(const std::wstring& engineFolder);
    bool startVaultCore(const std::wstring& engineFolder);
    static bool startPanekit(const std::wstring& folder);
    void endZelPlatform();

    bool started_ = false;
    void* zelPlatform_ = nullptr;
    void* vaultCore_ = nullptr;
};

/// Full path of a module file: the folder, or the program's own when that is null, one separator, the file name.
std::wstring modulePath(const wchar_t* folder, const std::wstring& fileName);

} // namespace JobRunner
