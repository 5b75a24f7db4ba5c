#include "statistics/win32/class_factory.h"

#include "statistics/win32/statistics_client.h"

#include <new>

namespace StatisticsModule
{
namespace
{

/// Null when memory runs out.
StatisticsClientFactory* newFactory(CreateRecorderFunction createRecorder) noexcept
{
    try
    {
        return new StatisticsClientFactory(createRecorder());
    }
    catch (...)
    {
        return nullptr;
    }
}

/// What the caller asked for of a new object, whose first reference is given up; a null one tells of missing memory.
HRESULT handOut(IUnknown* made, REFIID id, void** object)
{
    if (!made)
        return E_OUTOFMEMORY;
    const HRESULT result = made->QueryInterface(id, object);
    made->Release();
    return result;
}

} // namespace

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID id, void** object)
{
    if (!object)
        return E_POINTER;
    *object = nullptr;
    if (outer)
        return CLASS_E_NOAGGREGATION;
    return handOut(newFactory(createRecorder_), id, object);
}

HRESULT ClassFactory::LockServer(BOOL lock)
{
    lock ? ModuleUse::add() : ModuleUse::remove();
    return S_OK;
}

HRESULT getClassObject(REFCLSID classId, REFIID id, void** object, CreateRecorderFunction createRecorder)
{
    if (!object)
        return E_POINTER;
    *object = nullptr;
    if (!IsEqualCLSID(classId, guidOf(FactoryClass)))
        return CLASS_E_CLASSNOTAVAILABLE;
    return handOut(new (std::nothrow) ClassFactory(createRecorder), id, object);
}

HRESULT canUnloadNow()
{
    return ModuleUse::isNone() ? S_OK : S_FALSE;
}

} // namespace StatisticsModule
