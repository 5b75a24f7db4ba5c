#include "recorded/user_account.h"

#include <windows.h>

#include <stdexcept>

namespace EndToEnd
{

namespace
{

constexpr const wchar_t* Settings = L"Software\\Halden\\ZEL";
constexpr const wchar_t* KeptSettings = L"Software\\Halden\\ZEL.kept";

bool exists(const wchar_t* path)
{
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, path, 0, KEY_READ, &key) != ERROR_SUCCESS)
        return false;
    RegCloseKey(key);
    return true;
}

/// Copies the values of a key.
void copy(const wchar_t* from, const wchar_t* to)
{
    HKEY source = nullptr;
    HKEY target = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, from, 0, KEY_READ, &source) != ERROR_SUCCESS ||
        RegCreateKeyExW(HKEY_CURRENT_USER, to, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &target, nullptr) !=
            ERROR_SUCCESS)
        throw std::runtime_error("the settings cannot be put away");
    wchar_t name[256];
    BYTE data[4096];
    DWORD type = 0;
    for (DWORD index = 0, length = 256, size = sizeof(data);
         RegEnumValueW(source, index, name, &length, nullptr, &type, data, &size) == ERROR_SUCCESS;
         ++index, length = 256, size = sizeof(data))
        RegSetValueExW(target, name, 0, type, data, size);
    RegCloseKey(source);
    RegCloseKey(target);
}

} // namespace

/// The user's own values are kept beside their key; when a test ended badly they still are.
class UserAccount::Place
{
public:
    explicit Place(std::optional<Component> component)
    {
        if (!exists(KeptSettings) && exists(Settings))
            copy(Settings, KeptSettings);
        RegDeleteKeyW(HKEY_CURRENT_USER, Settings);
        if (component)
            installed_.emplace(*component);
    }
    ~Place()
    {
        RegDeleteKeyW(HKEY_CURRENT_USER, Settings);
        if (!exists(KeptSettings))
            return;
        copy(KeptSettings, Settings);
        RegDeleteKeyW(HKEY_CURRENT_USER, KeptSettings);
    }
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;

private:
    std::optional<StatisticsTesting::InstalledComponent> installed_;
};

UserAccount::UserAccount(std::optional<Component> component) : place_(std::make_unique<Place>(component)) {}

UserAccount::~UserAccount() = default;

} // namespace EndToEnd
