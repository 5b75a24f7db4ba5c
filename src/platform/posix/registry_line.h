#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Platform
{

// Parts of the lines that a registry is written in. Text is UTF-8 between quotation marks, in which a percent sign and
// four digits stand for a unit that would not be seen, or not survive.

std::string quoted(std::u16string_view units);
/// With as many digits as given.
std::string hexadecimal(std::uint32_t value, std::size_t digits);
/// Two digits each.
std::string hexadecimal(const std::vector<std::uint8_t>& bytes);

/// Little-endian; an odd byte at the end is dropped.
std::u16string unitsOfData(const std::vector<std::uint8_t>& data);
std::vector<std::uint8_t> dataOfUnits(std::u16string_view units);

/// Takes one part after the other off a line; parts have one space between them. Nothing where there is no such part.
class LineReader
{
public:
    explicit LineReader(std::string_view line) : rest_(line) {}

    std::string_view word();
    std::optional<std::uint64_t> number();
    std::optional<std::u16string> text();
    /// Two digits each; there may be none.
    std::optional<std::vector<std::uint8_t>> bytes();
    bool isAtEnd() const { return rest_.empty(); }

private:
    std::string_view rest_;
};

} // namespace Platform
