#pragma once

#include "windows/framework/view_callback.h"

#include <cstdint>

namespace JobRunner
{

/// Which job runs. The values are the engine bridges' own.
enum ProgressOperation : int
{
    OperationEncrypt = 1,
    OperationEncryptSfx = 2,
    OperationDecrypt = 3,
    OperationDelete = 4,
    OperationWipe = 5,
};

inline constexpr double UnknownPercent = -1.0;
inline constexpr int UnknownTime = -1;
inline constexpr std::uint64_t UnknownBytes = ~std::uint64_t{0};

/// The progress display. `create`, `waitUntilCreated` and `close` wait for the display's own thread and must not
/// be called under a lock that a callback takes. All other operations may be called on any thread and never wait.
class IProgressWindowView
{
public:
    virtual ~IProgressWindowView() = default;
    /// Brings the display up, hidden, on a thread of its own, and returns when it exists.
    virtual void create() = 0;
    virtual void waitUntilCreated() = 0;
    /// Ends the display and its thread. Does nothing when the thread was never started.
    virtual void close() = 0;
    virtual bool isHidden() = 0;
    virtual void hide() = 0;
    virtual void show() = 0;
    virtual void setFileProgress(const wchar_t* fileName, double percent, bool wiping) = 0;
    /// `percent` -1.0 is unknown; `force` writes an unchanged percent too.
    virtual void setTotalProgress(double percent, bool force) = 0;
    virtual void setElapsedTime(int seconds) = 0;
    virtual void setTimeLeft(int seconds) = 0;
    virtual void setSpeed(std::uint64_t bytesPerSecond) = 0;
    virtual void setElapsedBytes(std::uint64_t bytes) = 0;
    virtual void setBytesLeft(std::uint64_t bytes) = 0;
    virtual void setTotalBytes(std::uint64_t bytes) = 0;
    virtual void onPaused() = 0;
    virtual void onResumed() = 0;

    /// Called on the display's own thread.
    ViewCallback onCancel;
    ViewCallback onPause;
};

} // namespace JobRunner
