#pragma once

#include <array>
#include <cstdint>

namespace StatisticsModule
{

/// A COM identifier, laid out as the system has it.
struct Identifier
{
    std::uint32_t first;
    std::uint16_t second;
    std::uint16_t third;
    std::array<std::uint8_t, 8> rest;
};

/// {1122E1A6-3AFE-4DBC-97EF-39F8E0691A52}, the class of the factory.
inline constexpr Identifier FactoryClass{0x1122E1A6, 0x3AFE, 0x4DBC, {0x97, 0xEF, 0x39, 0xF8, 0xE0, 0x69, 0x1A, 0x52}};
/// {0E8368E2-90F3-43E1-99FC-8D3B163D1B29}, the interface `IStatisticsClientFactory`.
inline constexpr Identifier FactoryInterface{
    0x0E8368E2, 0x90F3, 0x43E1, {0x99, 0xFC, 0x8D, 0x3B, 0x16, 0x3D, 0x1B, 0x29}};

/// The only kind of client that there is.
inline constexpr std::int32_t OnlyClientKind = 1;
/// The value of an event that has none.
inline constexpr std::int64_t NoEventValue = -99999;

} // namespace StatisticsModule
