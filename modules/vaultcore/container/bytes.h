#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace VaultCore
{

using Bytes = std::vector<std::uint8_t>;
using ByteView = std::span<const std::uint8_t>;

inline ByteView viewOf(const std::string& text)
{
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

/// Fills a buffer from its start; integers are little-endian. The buffer has to be large enough.
class ByteWriter
{
public:
    explicit ByteWriter(std::span<std::uint8_t> out) : out_(out) {}

    void u8(std::uint8_t value) { integer(value, 1); }
    void u16(std::uint16_t value) { integer(value, 2); }
    void u32(std::uint32_t value) { integer(value, 4); }
    void u64(std::uint64_t value) { integer(value, 8); }
    void put(ByteView bytes)
    {
        std::copy(bytes.begin(), bytes.end(), out_.begin());
        out_ = out_.subspan(bytes.size());
    }
    std::size_t left() const { return out_.size(); }

private:
    void integer(std::uint64_t value, std::size_t size)
    {
        for (std::size_t index = 0; index < size; ++index)
            out_[index] = static_cast<std::uint8_t>(value >> (8 * index));
        out_ = out_.subspan(size);
    }
    std::span<std::uint8_t> out_;
};

/// Takes a buffer apart from its start. Taking more than there is gives zeros and empty views, and `ok` is false from
/// then on.
class ByteReader
{
public:
    explicit ByteReader(ByteView bytes) : bytes_(bytes) {}

    std::uint8_t u8() { return static_cast<std::uint8_t>(integer(1)); }
    std::uint16_t u16() { return static_cast<std::uint16_t>(integer(2)); }
    std::uint32_t u32() { return static_cast<std::uint32_t>(integer(4)); }
    std::uint64_t u64() { return integer(8); }
    ByteView take(std::size_t size)
    {
        ok_ = ok_ && size <= bytes_.size();
        if (!ok_)
            return {};
        const ByteView taken = bytes_.first(size);
        bytes_ = bytes_.subspan(size);
        return taken;
    }
    /// Fills all of `out`, or leaves it as it is.
    void fill(std::span<std::uint8_t> out)
    {
        const ByteView taken = take(out.size());
        std::copy(taken.begin(), taken.end(), out.begin());
    }
    std::string text(std::size_t size)
    {
        const ByteView taken = take(size);
        return {taken.begin(), taken.end()};
    }
    ByteView rest() { return take(bytes_.size()); }
    std::size_t left() const { return bytes_.size(); }
    bool ok() const { return ok_; }

private:
    std::uint64_t integer(std::size_t size)
    {
        const ByteView taken = take(size);
        std::uint64_t value = 0;
        for (std::size_t index = taken.size(); index > 0; --index)
            value = value << 8 | taken[index - 1];
        return value;
    }
    ByteView bytes_;
    bool ok_ = true;
};

} // namespace VaultCore
