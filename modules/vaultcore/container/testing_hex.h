#pragma once

#include "vaultcore/container/bytes.h"

#include <string_view>

namespace VaultCore
{

/// Bytes of a text of hexadecimal digits.
inline Bytes hex(std::string_view digits)
{
    const auto valueOf = [](char digit)
    { return static_cast<unsigned>(digit <= '9' ? digit - '0' : (digit | 0x20) - 'a' + 10); };
    Bytes bytes(digits.size() / 2);
    for (std::size_t index = 0; index < bytes.size(); ++index)
        bytes[index] = static_cast<std::uint8_t>(valueOf(digits[2 * index]) * 16 + valueOf(digits[2 * index + 1]));
    return bytes;
}

} // namespace VaultCore
