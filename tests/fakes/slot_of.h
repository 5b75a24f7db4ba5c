#pragma once

#include <cstddef>
#include <cstring>

namespace Fakes
{

/// Index in its class's table of the virtual operation that `member` points to. Both compilers of this program keep
/// such a pointer as 1 plus the distance of the entry in bytes.
template <class Member> std::size_t slotOf(Member member)
{
    std::size_t word = 0;
    static_assert(sizeof(member) == 2 * sizeof(word));
    std::memcpy(&word, &member, sizeof(word));
    return (word - 1) / sizeof(void*);
}

/// Pointer to the virtual operation at `slot`, for a call by number. `Member` has to be the operation's type.
template <class Member> Member memberAt(std::size_t slot)
{
    Member member = nullptr;
    const std::size_t word = 1 + slot * sizeof(void*);
    std::memcpy(&member, &word, sizeof(word));
    return member;
}

} // namespace Fakes
