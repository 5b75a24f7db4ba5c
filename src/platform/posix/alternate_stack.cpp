#include "platform/posix/alternate_stack.h"

#include <new>

namespace Platform
{

namespace
{

/// The state of a processor alone can take more than ten thousand bytes.
constexpr std::size_t Size = 65536;

} // namespace

AlternateStack::AlternateStack()
{
    stack_t former{};
    if (sigaltstack(nullptr, &former) != 0 || (former.ss_flags & SS_DISABLE) == 0)
        return;
    memory_.reset(new (std::nothrow) std::byte[Size]);
    if (!memory_)
        return;
    stack_t own{};
    own.ss_sp = memory_.get();
    own.ss_size = Size;
    sigaltstack(&own, nullptr);
}

AlternateStack::~AlternateStack()
{
    if (!memory_)
        return;
    stack_t none{};
    none.ss_flags = SS_DISABLE;
    sigaltstack(&none, nullptr);
}

} // namespace Platform
