#include "panekit/control_factory.h"

#define PANEKIT_EXPORT extern "C" __declspec(dllexport)

/// Not zero: started. The module needs nothing from its folder.
PANEKIT_EXPORT int initialize(const wchar_t*)
{
    Panekit::start();
    return 1;
}

PANEKIT_EXPORT void uninitialize()
{
    Panekit::stop();
}

PANEKIT_EXPORT ICustomControl* createControl(const wchar_t* classId, void* parent, int x, int y, int width, int height)
{
    return Panekit::makeControl(classId, parent, x, y, width, height);
}
