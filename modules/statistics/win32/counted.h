#pragma once

#include <unknwn.h>

#include <atomic>

namespace StatisticsModule
{

/// What keeps this module loaded: its objects, and the locks of its class factory.
class ModuleUse
{
public:
    static void add() { ++count_; }
    static void remove() { --count_; }
    static bool isNone() { return count_ == 0; }

private:
    inline static std::atomic<long> count_{0};
};

/// The common operations of an object that is made with `new` and one reference, and answers for `Interface` under the
/// identifier that `hasInterface` knows, and as IUnknown.
template <class Interface> class Counted : public Interface
{
public:
    Counted() { ModuleUse::add(); }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override
    {
        if (!object)
            return E_POINTER;
        const bool known = IsEqualIID(id, IID_IUnknown) || hasInterface(id);
        *object = known ? static_cast<Interface*>(this) : nullptr;
        if (!known)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG left = --references_;
        if (left == 0)
            delete this;
        return left;
    }

protected:
    virtual ~Counted() { ModuleUse::remove(); }
    virtual bool hasInterface(REFIID id) const = 0;

private:
    std::atomic<ULONG> references_{1};
};

} // namespace StatisticsModule
