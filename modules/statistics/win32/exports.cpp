#include "statistics/win32/class_factory.h"
#include "statistics/win32/registration.h"

#include <olectl.h>

// What COM and regsvr32 call. The names leave the module undecorated by exports.def.

using namespace StatisticsModule;

namespace
{

HRESULT registerThis(Users users) noexcept
{
    try
    {
        const std::wstring file = ownFile();
        return file.empty() ? SELFREG_E_CLASS : registerClass(users, file);
    }
    catch (...)
    {
        return E_OUTOFMEMORY;
    }
}

HRESULT unregister(Users users) noexcept
{
    try
    {
        return unregisterClass(users);
    }
    catch (...)
    {
        return E_OUTOFMEMORY;
    }
}

} // namespace

STDAPI DllGetClassObject(REFCLSID classId, REFIID id, void** object)
{
    return getClassObject(classId, id, object, &createUserRecorder);
}

STDAPI DllCanUnloadNow()
{
    return canUnloadNow();
}

STDAPI DllRegisterServer()
{
    return registerThis(Users::This);
}

STDAPI DllUnregisterServer()
{
    return unregister(Users::This);
}

/// "machine" stands for all users; anything else for this one.
STDAPI DllInstall(BOOL install, LPCWSTR words)
{
    const Users users = words && lstrcmpiW(words, L"machine") == 0 ? Users::All : Users::This;
    return install ? registerThis(users) : unregister(users);
}
