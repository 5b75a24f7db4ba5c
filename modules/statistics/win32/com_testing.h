#pragma once

#include "interfaces/statistics/win32/statistics_client.h"
#include "statistics_testing/installed_component.h"

#include <gtest/gtest.h>
#include <oleauto.h>

#include <memory>
#include <string>

// What the tests of the COM class share.

namespace StatisticsModule
{

struct ReleaseObject
{
    void operator()(IUnknown* object) const { object->Release(); }
};
template <class Interface> using Com = std::unique_ptr<Interface, ReleaseObject>;

/// A text for one call.
class Text
{
public:
    Text(std::wstring_view text) : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {}
    ~Text() { SysFreeString(text_); }
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;
    operator BSTR() const { return text_; }

private:
    const BSTR text_;
};

using GetClassObjectFunction = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
using PlainFunction = HRESULT(STDAPICALLTYPE*)();
using InstallFunction = HRESULT(STDAPICALLTYPE*)(BOOL, LPCWSTR);

/// The DLL that is shipped, loaded without COM.
class LoadedModule
{
public:
    LoadedModule() : module_(LoadLibraryW(StatisticsTesting::shippedModule().c_str())) {}
    ~LoadedModule() { FreeLibrary(module_); }
    LoadedModule(const LoadedModule&) = delete;
    LoadedModule& operator=(const LoadedModule&) = delete;

    template <class Function> Function find(const char* name) const
    {
        return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
    }
    HRESULT getClassObject(REFCLSID classId, REFIID id, void** object) const
    {
        return find<GetClassObjectFunction>("DllGetClassObject")(classId, id, object);
    }
    HRESULT canUnloadNow() const { return find<PlainFunction>("DllCanUnloadNow")(); }

    Com<IClassFactory> makeClassFactory() const
    {
        void* made = nullptr;
        EXPECT_EQ(getClassObject(guidOf(FactoryClass), IID_IClassFactory, &made), S_OK);
        return Com<IClassFactory>(static_cast<IClassFactory*>(made));
    }
    Com<IStatisticsClientFactory> makeFactory() const
    {
        void* made = nullptr;
        EXPECT_EQ(makeClassFactory()->CreateInstance(nullptr, guidOf(FactoryInterface), &made), S_OK);
        return Com<IStatisticsClientFactory>(static_cast<IStatisticsClientFactory*>(made));
    }
    Com<IStatisticsClient> makeClient() const
    {
        IStatisticsClient* made = nullptr;
        EXPECT_EQ(makeFactory()->CreateClient(1, Text(L"E"), Text(L"S"), Text(L"T"), &made), S_OK);
        return Com<IStatisticsClient>(made);
    }

private:
    const HMODULE module_;
};

} // namespace StatisticsModule
