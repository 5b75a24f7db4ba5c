#pragma once

#include "fakes/fake_messages.h"
#include "fakes/fake_threads.h"
#include "platform/handles.h"

#include <map>

namespace Fakes
{

/// Handles of the fakes, waited for on the fake clock. Logs "close NAME", "wait NAME LIMIT" and
/// "waitOrMessage NAME LIMIT MASK" with limits as numbers, or "infinite"; NAME is "null", "invalid" or "closed" for
/// what is no handle. One thread at a time.
class FakeHandles : public Platform::Handles
{
public:
    FakeHandles(CallLog& log, FakeThreads& threads, FakeMessages& messages)
        : log_(log), threads_(threads), messages_(messages)
    {
    }

    /// A new handle. Without a condition it is never signalled.
    Platform::Handle add(std::wstring name, std::function<bool()> signalled = nullptr);
    std::wstring nameOf(Platform::Handle handle) const;
    /// Names of the handles that nobody has closed.
    std::vector<std::wstring> open() const;
    /// Closes without a word in the log; false when it was no handle.
    bool remove(Platform::Handle handle);

    bool close(Platform::Handle handle) override;
    std::uint32_t wait(Platform::Handle handle, std::uint32_t limit, bool alertable) override;
    std::uint32_t waitOrMessage(Platform::Handle handle, std::uint32_t limit, std::uint32_t wakeMask) override;
    std::uint32_t lastError() override { return error_; }
    void setLastError(std::uint32_t error) override { error_ = error; }

private:
    struct Object
    {
        std::wstring name;
        std::function<bool()> signalled;
    };

    const Object* find(Platform::Handle handle) const;

    CallLog& log_;
    FakeThreads& threads_;
    FakeMessages& messages_;
    std::map<Platform::Handle, Object> objects_;
    std::uintptr_t last_ = 0x100;
    std::uint32_t error_ = 0;
};

} // namespace Fakes
