#include "vaultcore/win32/win32_files.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace VaultCore
{
namespace
{

/// Names that mean a device, in whatever folder and with whatever extension.
constexpr std::array<std::wstring_view, 6> Devices{L"CON", L"PRN", L"AUX", L"NUL", L"CONIN$", L"CONOUT$"};

/// Those that turn the direction of writing would let "exe.txt" show as "txt.exe".
bool isForbidden(wchar_t letter)
{
    return letter < L' ' || (letter >= L'\x7F' && letter < L'\xA0') || (letter >= L'\u202A' && letter <= L'\u202E') ||
           (letter >= L'\u2066' && letter <= L'\u2069') ||
           std::wstring_view(L"<>:\"|?*").find(letter) != std::wstring_view::npos;
}

/// "COM" and "LPT" with a digit; the raised ones count as well.
bool isPort(std::wstring_view name)
{
    return name.size() == 4 && (name.starts_with(L"COM") || name.starts_with(L"LPT")) &&
           std::wstring_view(L"0123456789\u00B9\u00B2\u00B3").find(name[3]) != std::wstring_view::npos;
}

bool isDevice(const std::wstring& leaf)
{
    std::wstring name = leaf.substr(0, leaf.find(L'.'));
    while (name.ends_with(L' '))
        name.pop_back();
    CharUpperBuffW(name.data(), static_cast<DWORD>(name.size()));
    return isPort(name) || std::find(Devices.begin(), Devices.end(), name) != Devices.end();
}

} // namespace

std::wstring safeLeafName(const std::wstring& text)
{
    std::wstring leaf = text.substr(text.find_last_of(L"/\\") + 1);
    std::replace_if(leaf.begin(), leaf.end(), isForbidden, L'_');
    while (leaf.ends_with(L'.') || leaf.ends_with(L' '))
        leaf.pop_back();
    return isDevice(leaf) ? L'_' + leaf : leaf;
}

} // namespace VaultCore
