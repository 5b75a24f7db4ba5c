#include "platform/posix/typed_bytes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>

using namespace Platform;

namespace
{

constexpr char Typed = 'x';
std::size_t freedBlocks;
std::size_t typedBytesLeft;

/// Looks at each block before it is freed.
template <class Value> struct Inspecting : std::allocator<Value>
{
    template <class Other> struct rebind
    {
        using other = Inspecting<Other>;
    };

    void deallocate(Value* block, std::size_t size)
    {
        ++freedBlocks;
        typedBytesLeft += static_cast<std::size_t>(std::count(block, block + size, Typed));
        std::allocator<Value>::deallocate(block, size);
    }
};

using Inspected = std::basic_string<char, std::char_traits<char>, Inspecting<char>>;

} // namespace

TEST(AppendTyped, leavesNothingInTheMemoryThatTheTextOutgrows)
{
    freedBlocks = 0;
    typedBytesLeft = 0;
    Inspected text;
    for (int i = 0; i < 1000; ++i)
        appendTyped(text, Typed);
    EXPECT_GT(freedBlocks, 2u);
    EXPECT_EQ(typedBytesLeft, 0u);
    EXPECT_EQ(text, Inspected(1000, Typed));
}
