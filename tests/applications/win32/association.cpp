#include "applications/association.h"

#include <windows.h>

#include <shlobj.h>
#include <shlwapi.h>

#include <array>
#include <stdexcept>

namespace Applications
{

namespace
{

constexpr wchar_t Classes[] = L"Software\\Classes\\";

std::wstring kindOf(const std::wstring& extension)
{
    return L"JobRunnerTest" + extension;
}

/// Wine looks only at what is set for the whole machine, which on Windows not everybody may set.
const std::array<HKEY, 2> Roots = {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE};

void setDefault(const std::wstring& key, const std::wstring& value)
{
    const std::wstring path = Classes + key;
    const auto size = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
    for (const HKEY root : Roots)
        if (SHSetValueW(root, path.c_str(), nullptr, REG_SZ, value.c_str(), size) != 0 && root == HKEY_CURRENT_USER)
            throw std::runtime_error("the association cannot be written");
}

void remove(const std::wstring& key)
{
    for (const HKEY root : Roots)
        SHDeleteKeyW(root, (Classes + key).c_str());
}

} // namespace

Association::Association(std::wstring extension, const std::wstring& arguments) : extension_(std::move(extension))
{
    const std::wstring command = L'"' + testApplication() + L"\" " + arguments + L" \"%1\"";
    setDefault(extension_, kindOf(extension_));
    setDefault(kindOf(extension_) + L"\\shell\\open\\command", command);
    SHChangeNotify(SHCNE_ASSOCCHANGED, SHCNF_IDLIST, nullptr, nullptr);
}

Association::Association(std::wstring extension) : extension_(std::move(extension))
{
    remove(extension_);
}

Association::~Association()
{
    remove(extension_);
    remove(kindOf(extension_));
    SHChangeNotify(SHCNE_ASSOCCHANGED, SHCNF_IDLIST, nullptr, nullptr);
}

std::wstring testApplication()
{
    std::array<wchar_t, 1024> path{};
    GetModuleFileNameW(nullptr, path.data(), 1024);
    std::wstring program = path.data();
    return program.substr(0, program.rfind(L'\\') + 1) + L"test_application.exe";
}

} // namespace Applications
