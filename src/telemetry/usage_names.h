#pragma once

#include <cstdint>
#include <string>

namespace Halden::ZEL::Telemetry
{

/// The maker's web domain. A comment that holds it is the suite's own, any other is the user's.
inline constexpr const wchar_t* MakerDomain = L"www.halden.example";

/// Name of an algorithm id in the usage reports; empty for an id outside the table.
std::wstring algorithmName(std::uint32_t algorithm);
/// Name of what becomes of the source files; "unknown" for a number that stands for nothing.
std::wstring destinyName(std::uint32_t destiny);

} // namespace Halden::ZEL::Telemetry
