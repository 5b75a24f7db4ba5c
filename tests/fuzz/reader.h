#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

// What is tried with any bytes. Each reader is a program of its own for the fuzzer, and all of them together are a test
// program that reads what the fuzzer has found.

namespace Fuzz
{

using Bytes = std::vector<std::uint8_t>;
using ByteView = std::span<const std::uint8_t>;

struct Reader
{
    /// Of the program and of the folder of its inputs.
    const char* name;
    /// Whether the input was taken. Throws `Broken` when something does not hold that always has to.
    bool (*read)(ByteView input);
    /// Inputs to start from, made by the writers of what is read.
    std::vector<Bytes> (*seeds)();
    /// Makes checksums fit again, so that a change gets past them. May be null.
    void (*repair)(std::span<std::uint8_t> input) = nullptr;
};

/// Something does not hold that has to hold for every input.
struct Broken : std::logic_error
{
    using std::logic_error::logic_error;
};

inline void expect(bool holds, const char* what)
{
    if (!holds)
        throw Broken(what);
}

/// Those of this program, by their names.
const std::vector<Reader>& readers();

/// Adds a reader to those of the program, before `main`.
struct Registered
{
    explicit Registered(const Reader& reader);
};

inline Bytes bytesOfText(std::string_view text)
{
    return {text.begin(), text.end()};
}

inline std::string textOfBytes(ByteView bytes)
{
    return {bytes.begin(), bytes.end()};
}

} // namespace Fuzz
