#include "recorded/user_account.h"

#include "systemutilities/registry/i_registry_key.h"

namespace EndToEnd
{

namespace
{

std::unique_ptr<Halden::SystemUtilities::Registry::IRegistryKey> settings()
{
    auto key =
        Halden::SystemUtilities::Registry::CreateRegistryKey(Platform::CurrentUser, L"Software\\Halden\\ZEL", false);
    key->Create(false);
    return key;
}

} // namespace

void UserAccount::storeNumber(const std::wstring& name, std::uint32_t value) const
{
    settings()->SetDword(name, value, false);
}

void UserAccount::storeText(const std::wstring& name, const std::wstring& text) const
{
    settings()->SetString(name, text);
}

std::vector<std::string> UserAccount::told() const
{
    std::vector<std::string> calls = records_.calls();
    records_.clear();
    return calls;
}

} // namespace EndToEnd
