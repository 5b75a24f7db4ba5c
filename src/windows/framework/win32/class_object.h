#pragma once

// For the tests of what asks the system for an object by its class.

#include <windows.h>

#include <objbase.h>

namespace JobRunner
{

/// As long as it lives, this thread's apartment gets one object whenever it asks for an object of a class.
class ClassObject final : public IClassFactory
{
public:
    ClassObject(REFCLSID classId, IUnknown& object) : object_(object)
    {
        registered_ =
            SUCCEEDED(CoRegisterClassObject(classId, this, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &registration_));
    }
    virtual ~ClassObject() { CoRevokeClassObject(registration_); }
    ClassObject(const ClassObject&) = delete;
    ClassObject& operator=(const ClassObject&) = delete;

    bool isRegistered() const { return registered_; }

    HRESULT WINAPI QueryInterface(REFIID iid, void** object) override
    {
        const bool known = IsEqualIID(iid, IID_IClassFactory) || IsEqualIID(iid, IID_IUnknown);
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG WINAPI AddRef() override { return 1; }
    ULONG WINAPI Release() override { return 1; }
    HRESULT WINAPI CreateInstance(IUnknown*, REFIID iid, void** object) override
    {
        return object_.QueryInterface(iid, object);
    }
    HRESULT WINAPI LockServer(BOOL) override { return S_OK; }

private:
    IUnknown& object_;
    DWORD registration_ = 0;
    bool registered_ = false;
};

} // namespace JobRunner
