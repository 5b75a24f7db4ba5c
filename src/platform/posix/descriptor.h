#pragma once

#include <unistd.h>

#include <utility>

namespace Platform
{

/// Owns an open file descriptor; -1 for none.
class Descriptor
{
public:
    Descriptor() = default;
    explicit Descriptor(int value) : value_(value) {}
    Descriptor(Descriptor&& other) noexcept : value_(std::exchange(other.value_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(value_, other.value_);
        return *this;
    }
    ~Descriptor()
    {
        if (value_ >= 0)
            ::close(value_);
    }

    explicit operator bool() const { return value_ >= 0; }
    int get() const { return value_; }

private:
    int value_ = -1;
};

} // namespace Platform
