#include "platform/registry_names.h"

#include "platform/utf16.h"

#include <array>

namespace Platform
{

namespace
{

/// Capital letters from `first` to `last`, of which every `step`-th has its small one `distance` behind it.
struct Capitals
{
    char16_t first;
    char16_t last;
    char16_t step;
    char16_t distance;
};

constexpr std::array AllCapitals = {
    Capitals{0x0041, 0x005A, 1, 32}, // Latin
    Capitals{0x00C0, 0x00D6, 1, 32}, Capitals{0x00D8, 0x00DE, 1, 32}, Capitals{0x0100, 0x012E, 2, 1},
    Capitals{0x0132, 0x0136, 2, 1},  Capitals{0x0139, 0x0147, 2, 1},  Capitals{0x014A, 0x0176, 2, 1},
    Capitals{0x0179, 0x017D, 2, 1},  Capitals{0x0386, 0x0386, 1, 38}, // Greek
    Capitals{0x0388, 0x038A, 1, 37}, Capitals{0x038C, 0x038C, 1, 64}, Capitals{0x038E, 0x038F, 1, 63},
    Capitals{0x0391, 0x03A1, 1, 32}, Capitals{0x03A3, 0x03AB, 1, 32}, Capitals{0x0400, 0x040F, 1, 80}, // Cyrillic
    Capitals{0x0410, 0x042F, 1, 32}, Capitals{0x0460, 0x0480, 2, 1},  Capitals{0x048A, 0x04BE, 2, 1},
    Capitals{0x04D0, 0x0522, 2, 1},  Capitals{0x0531, 0x0556, 1, 48}, // Armenian
    Capitals{0x1E00, 0x1E94, 2, 1},                                   // Latin, with two marks
    Capitals{0x1EA0, 0x1EFE, 2, 1},  Capitals{0xFF21, 0xFF3A, 1, 32}, // Latin, in full width
};

char16_t folded(char16_t unit)
{
    for (const auto& [first, last, step, distance] : AllCapitals)
        if (unit >= first && unit <= last && (unit - first) % step == 0)
            return static_cast<char16_t>(unit + distance);
    return unit;
}

} // namespace

std::u16string registryUnits(std::wstring_view text)
{
    const auto bytes = toUtf16(text.substr(0, text.find(L'\0')));
    std::u16string units;
    units.reserve(bytes.size() / 2);
    for (std::size_t index = 0; index < bytes.size(); index += 2)
        units += static_cast<char16_t>(bytes[index] | bytes[index + 1] << 8);
    return units;
}

std::wstring registryText(std::u16string_view units)
{
    std::vector<std::uint8_t> bytes;
    bytes.reserve(units.size() * 2);
    for (const char16_t unit : units)
    {
        bytes.push_back(static_cast<std::uint8_t>(unit));
        bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
    }
    return fromUtf16(bytes);
}

std::u16string foldedName(std::u16string_view name)
{
    std::u16string result(name);
    for (char16_t& unit : result)
        unit = folded(unit);
    return result;
}

} // namespace Platform
