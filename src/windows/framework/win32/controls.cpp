#include "windows/framework/win32/controls.h"

#include "platform/modules.h"
#include "platform/platform.h"
#include "windows/framework/view_factory.h"

#include <atomic>

namespace JobRunner
{

namespace
{

CreateControlFunction findCreateControl()
{
    if (!controlModule())
        return nullptr;
    void* const found = Platform::platform().modules.findExport(controlModule(), "createControl");
    return reinterpret_cast<CreateControlFunction>(found);
}

} // namespace

ICustomControl* createControl(const wchar_t* classId, HWND parent, int x, int y, int width, int height)
{
    static std::atomic<CreateControlFunction> kept{nullptr};
    if (!kept)
        kept = findCreateControl();
    const CreateControlFunction function = kept;
    return function ? function(classId, parent, x, y, width, height) : nullptr;
}

} // namespace JobRunner
