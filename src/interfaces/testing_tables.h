#pragma once

#include "fakes/slot_of.h"

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

// What the tests of the interfaces share.

namespace Fakes
{

/// The operations of one table, in the order in which a module built elsewhere has them.
template <class... Members> void expectSlots(std::size_t first, Members... members)
{
    const std::vector<std::size_t> slots{slotOf(members)...};
    std::vector<std::size_t> expected(slots.size());
    std::iota(expected.begin(), expected.end(), first);
    EXPECT_EQ(slots, expected);
}

} // namespace Fakes
