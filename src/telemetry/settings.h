#pragma once

#include <cstdint>
#include <string>

namespace Halden::ZEL::Telemetry
{

/// The key below the user's own that holds the settings and the identifiers. Whoever installs the suite makes it.
inline constexpr const wchar_t* SettingsKey = L"Software\\Halden\\ZEL";

// The settings, all of them 32-bit numbers. Each call opens the key afresh, so that a change counts at once. A
// missing key or value reads as `otherwise`; any other failure is a `Win32Exception`. Writing does not make the key.

std::uint32_t readSetting(const wchar_t* name, std::uint32_t otherwise);
void writeSetting(const wchar_t* name, std::uint32_t value);

/// A text that the suite has stored under this name for the statistics client, up to its first null. Empty on any
/// failure; raises nothing.
std::wstring ReadClientIdentifier(const std::wstring& name);

} // namespace Halden::ZEL::Telemetry
