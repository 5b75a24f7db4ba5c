#include "systemutilities/registry/registry_key.h"

#include "platform/handles.h"
#include "platform/platform.h"
#include "systemutilities/win32_exception.h"

#include <new>

namespace Halden::SystemUtilities::Registry
{

namespace
{

constexpr char OpenFailed[] = "RegOpenKey failed.";
constexpr char CreateFailed[] = "RegCreateKey failed.";

Platform::Registry& registry()
{
    return Platform::platform().registry;
}

std::uint32_t openOptions(bool openLink)
{
    return openLink ? Platform::OptionOpenLink : 0;
}

std::uint32_t createOptions(bool createLink)
{
    return createLink ? Platform::OptionCreateLink : 0;
}

} // namespace

std::unique_ptr<IRegistryKey> CreateRegistryKey(Platform::RegistryHandle root, std::wstring path, bool view64)
{
    return std::unique_ptr<IRegistryKey>(new (std::nothrow) RegistryKey(root, std::move(path), view64));
}

RegistryKey::RegistryKey(Platform::RegistryHandle root, std::wstring path, bool view64)
    : path_(std::move(path)), root_(root), view64_(view64)
{
}

RegistryKey::~RegistryKey()
{
    close();
}

bool RegistryKey::isOpen() const
{
    return handle_ != Platform::ClosedKey && handle_ != 0;
}

void RegistryKey::close()
{
    if (isOpen())
        registry().closeKey(handle_);
    handle_ = Platform::ClosedKey;
}

std::uint32_t RegistryKey::viewFlag() const
{
    return view64_ ? Platform::KeyView64 : Platform::KeyView32;
}

std::uint32_t RegistryKey::writeAccess() const
{
    return Platform::KeyAllAccess | viewFlag();
}

bool RegistryKey::openForReading(bool openLink)
{
    if (isOpen() && openLink_ == openLink)
        return true; // one that is open for writing serves as well
    // Intended: an open handle of the other kind is replaced here, not closed; it stays when the open fails.
    writable_ = false;
    openLink_ = openLink;
    const std::uint32_t result =
        registry().openKey(root_, path_, openOptions(openLink), Platform::KeyRead | viewFlag(), handle_);
    if (result == Platform::ErrorSuccess)
        return true;
    if (result != Platform::ErrorFileNotFound)
        throw Win32Exception(OpenFailed, result);
    handle_ = Platform::ClosedKey;
    return false;
}

void RegistryKey::openForWriting(bool openLink)
{
    if (isOpen() && writable_ && openLink_ == openLink)
        return;
    close();
    const std::uint32_t result = registry().openKey(root_, path_, openOptions(openLink), writeAccess(), handle_);
    if (result != Platform::ErrorSuccess)
        throw Win32Exception(OpenFailed, result);
    writable_ = true;
    openLink_ = openLink;
}

bool RegistryKey::Exists(bool openLink)
{
    Platform::RegistryHandle found = Platform::ClosedKey;
    // Intended: the view of the process, whichever view this object has.
    const std::uint32_t result = registry().openKey(root_, path_, openOptions(openLink), Platform::KeyRead, found);
    if (result == Platform::ErrorFileNotFound)
        return false;
    if (result != Platform::ErrorSuccess)
        throw Win32Exception(OpenFailed, result);
    registry().closeKey(found);
    return true;
}

Platform::RegistryHandle RegistryKey::Create(bool createLink)
{
    // Intended: a handle that was open before is replaced, not closed, and how it was opened stays noted.
    const std::uint32_t result = registry().createKey(root_, path_, createOptions(createLink), writeAccess(), handle_);
    if (result != Platform::ErrorSuccess)
        throw Win32Exception(CreateFailed, result);
    writable_ = true;
    return handle_;
}

void RegistryKey::CreateSubKey(const std::wstring& subKey, bool createLink)
{
    openForWriting(false);
    Platform::RegistryHandle created = Platform::ClosedKey;
    const std::uint32_t result =
        registry().createKey(handle_, subKey, createOptions(createLink), writeAccess(), created);
    if (result != Platform::ErrorSuccess)
        throw Win32Exception(CreateFailed, result);
    registry().closeKey(created);
}

} // namespace Halden::SystemUtilities::Registry
