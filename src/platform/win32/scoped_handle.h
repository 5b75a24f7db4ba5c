#pragma once

#include <windows.h>

#include <utility>

namespace Platform
{

/// Owns a kernel handle whose invalid value is null.
class ScopedHandle
{
public:
    ScopedHandle() = default;
    explicit ScopedHandle(HANDLE handle) : handle_(handle) {}
    ScopedHandle(ScopedHandle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    ScopedHandle& operator=(ScopedHandle&& other) noexcept
    {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~ScopedHandle() { reset(); }

    HANDLE get() const { return handle_; }
    explicit operator bool() const { return handle_ != nullptr; }
    void reset()
    {
        if (handle_)
            CloseHandle(std::exchange(handle_, nullptr));
    }

private:
    HANDLE handle_ = nullptr;
};

} // namespace Platform
