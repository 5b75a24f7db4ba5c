#include "telemetry/settings.h"

#include "platform/platform.h"
#include "platform/registry.h"
#include "platform/utf16.h"
#include "systemutilities/registry/i_registry_key.h"

#include <vector>

namespace Halden::ZEL::Telemetry
{

namespace
{

namespace Registry = SystemUtilities::Registry;

std::unique_ptr<Registry::IRegistryKey> settings()
{
    return Registry::CreateRegistryKey(Platform::CurrentUser, SettingsKey, false);
}

std::wstring queriedText(Platform::RegistryHandle key, const std::wstring& name)
{
    Platform::Registry& registry = Platform::platform().registry;
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    if (registry.queryValue(key, name, type, nullptr, size) != Platform::ErrorSuccess)
        return {};
    std::vector<std::uint8_t> data(size);
    if (registry.queryValue(key, name, type, data.data(), size) != Platform::ErrorSuccess)
        return {};
    data.resize(size);
    const std::wstring text = Platform::fromUtf16(data);
    return text.substr(0, text.find(L'\0'));
}

} // namespace

std::uint32_t readSetting(const wchar_t* name, std::uint32_t otherwise)
{
    return settings()->GetDword(name, otherwise);
}

void writeSetting(const wchar_t* name, std::uint32_t value)
{
    settings()->SetDword(name, value, false);
}

std::wstring ReadClientIdentifier(const std::wstring& name)
{
    Platform::Registry& registry = Platform::platform().registry;
    Platform::RegistryHandle key = Platform::ClosedKey;
    if (registry.openKey(Platform::CurrentUser, SettingsKey, 0, Platform::KeyRead, key) != Platform::ErrorSuccess)
        return {};
    std::wstring text = queriedText(key, name);
    registry.closeKey(key);
    return text;
}

} // namespace Halden::ZEL::Telemetry
