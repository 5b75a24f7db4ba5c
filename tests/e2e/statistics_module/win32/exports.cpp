#include "statistics/win32/class_factory.h"
#include "statistics_module/misbehaving_recorder.h"

STDAPI DllGetClassObject(REFCLSID classId, REFIID id, void** object)
{
    return StatisticsModule::getClassObject(classId, id, object, &EndToEnd::createMisbehavingRecorder);
}

STDAPI DllCanUnloadNow()
{
    return StatisticsModule::canUnloadNow();
}
