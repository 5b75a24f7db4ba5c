#pragma once

#include <signal.h>

#include <cstddef>
#include <memory>

namespace Platform
{

/// While it lives, the signals of crashes are handled on memory of their own, so that a thread that has used up its
/// stack can be reported. For the thread that makes it, and to be destroyed on the same one.
class AlternateStack
{
public:
    AlternateStack();
    ~AlternateStack();
    AlternateStack(const AlternateStack&) = delete;
    AlternateStack& operator=(const AlternateStack&) = delete;

private:
    std::unique_ptr<std::byte[]> memory_; ///< null when the thread had one already
};

} // namespace Platform
