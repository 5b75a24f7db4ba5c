#include "platform/win32/concerns.h"

#include <windows.h>

namespace Platform
{

namespace
{

static_assert(WaitSignalled == WAIT_OBJECT_0 && WaitMessage == WAIT_OBJECT_0 + 1);
static_assert(WaitTimedOut == WAIT_TIMEOUT && WaitFailed == WAIT_FAILED && WaitForever == INFINITE);
static_assert(AllInput == QS_ALLINPUT);
static_assert(ErrorFileNotFound == ERROR_FILE_NOT_FOUND && ErrorAccessDenied == ERROR_ACCESS_DENIED &&
              ErrorSharingViolation == ERROR_SHARING_VIOLATION);

class Win32Handles : public Handles
{
public:
    bool close(Handle handle) override { return CloseHandle(handle); }

    std::uint32_t wait(Handle handle, std::uint32_t limit, bool alertable) override
    {
        return WaitForSingleObjectEx(handle, limit, alertable);
    }

    std::uint32_t waitOrMessage(Handle handle, std::uint32_t limit, std::uint32_t wakeMask) override
    {
        return MsgWaitForMultipleObjects(1, &handle, FALSE, limit, wakeMask);
    }

    std::uint32_t lastError() override { return GetLastError(); }
    void setLastError(std::uint32_t error) override { SetLastError(error); }
};

} // namespace

Handles& win32Handles()
{
    static Win32Handles handles;
    return handles;
}

} // namespace Platform
