#pragma once

#include <cstddef>
#include <cstdint>

namespace VaultCore
{

/// A cipher of the table of algorithms. Their ids are 0 to 16 and never change.
struct Algorithm
{
    /// As shown to the user.
    const wchar_t* name;
    /// libgcrypt's number; 0 when it has none of that name and key size.
    int cipher;
    std::size_t keySize;
    std::size_t blockSize;
};

/// Null for a number outside the table and for an algorithm that libgcrypt lacks.
const Algorithm* findAlgorithm(std::uint32_t id);

} // namespace VaultCore
