#pragma once

#include "statistics/recorder.h"
#include "statistics/win32/counted.h"

#include <unknwn.h>

namespace StatisticsModule
{

/// Makes factories of clients, each with a recorder of its own from the function that it was given.
class ClassFactory final : public Counted<IClassFactory>
{
public:
    explicit ClassFactory(CreateRecorderFunction createRecorder) : createRecorder_(createRecorder) {}

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** object) override;
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

protected:
    bool hasInterface(REFIID id) const override { return IsEqualIID(id, IID_IClassFactory); }

private:
    const CreateRecorderFunction createRecorder_;
};

/// What `DllGetClassObject` answers.
HRESULT getClassObject(REFCLSID classId, REFIID id, void** object, CreateRecorderFunction createRecorder);
/// What `DllCanUnloadNow` answers.
HRESULT canUnloadNow();

} // namespace StatisticsModule
