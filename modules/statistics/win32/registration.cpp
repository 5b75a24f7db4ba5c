#include "statistics/win32/registration.h"

#include "interfaces/statistics/win32/statistics_client.h"

#include <objbase.h>

#include <array>

namespace StatisticsModule
{
namespace
{

HKEY rootOf(Users users)
{
    return users == Users::All ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

std::wstring classKey()
{
    std::array<wchar_t, 39> text{};
    StringFromGUID2(guidOf(FactoryClass), text.data(), static_cast<int>(text.size()));
    return std::wstring(L"Software\\Classes\\CLSID\\") + text.data();
}

/// `name` null stands for the value without a name.
LSTATUS setText(HKEY root, const std::wstring& key, const wchar_t* name, const std::wstring& text)
{
    const auto bytes = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
    return RegSetKeyValueW(root, key.c_str(), name, REG_SZ, text.c_str(), bytes);
}

} // namespace

HRESULT registerClass(Users users, const std::wstring& file)
{
    const std::wstring key = classKey();
    const std::wstring server = key + L"\\InprocServer32";
    LSTATUS status = setText(rootOf(users), key, nullptr, L"Statistics client factory");
    if (status == ERROR_SUCCESS)
        status = setText(rootOf(users), server, nullptr, file);
    if (status == ERROR_SUCCESS)
        status = setText(rootOf(users), server, L"ThreadingModel", L"Both");
    if (status != ERROR_SUCCESS)
        unregisterClass(users);
    return HRESULT_FROM_WIN32(static_cast<DWORD>(status));
}

HRESULT unregisterClass(Users users)
{
    const LSTATUS status = RegDeleteTreeW(rootOf(users), classKey().c_str());
    return status == ERROR_FILE_NOT_FOUND ? S_OK : HRESULT_FROM_WIN32(static_cast<DWORD>(status));
}

std::wstring ownFile()
{
    HMODULE module = nullptr;
    const DWORD wanted = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (!GetModuleHandleExW(wanted, reinterpret_cast<LPCWSTR>(&ownFile), &module))
        return {};
    constexpr DWORD Length = 32768;
    std::wstring file(Length, L'\0');
    const DWORD length = GetModuleFileNameW(module, file.data(), Length);
    // A name that was cut names another file.
    file.resize(length < Length ? length : 0);
    return file;
}

} // namespace StatisticsModule
