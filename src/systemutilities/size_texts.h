#pragma once

#include <cstdint>
#include <string>

// Sizes in bytes as texts in the user's notation. The units are the same in every language. Any thread.

namespace Halden::SystemUtilities
{

/// `value` divided by `divisor`, which is not 0, rounded to at most so many decimals: trailing zeros are taken off, and
/// no decimals (0 or less) leave no separator. Intended: the separators are read once and kept, so that a later change
/// of the user's notation is not seen.
std::wstring FormatScaled(std::uint64_t value, std::uint64_t divisor, int decimals);
/// "1,024 Bytes"
std::wstring FormatBytes(std::uint64_t value);
/// "1.5 KB", without decimals from 9 KB on.
std::wstring FormatKilobytes(std::uint64_t value);
/// "1.5 MB". -1 decimals mean one, and none from 100 MB on.
std::wstring FormatMegabytes(std::uint64_t value, int decimals);
/// "1.5 GB"
std::wstring FormatGigabytes(std::uint64_t value, int decimals);
/// In the unit that suits the value. Kilobytes choose their decimals themselves; -1 decimals mean none for megabytes
/// and two for gigabytes.
std::wstring FormatSize(std::uint64_t value, int decimals);
/// Kilobytes as long as there are less than 999,999 of them, then megabytes.
std::wstring FormatKilobytesOrMegabytes(std::uint64_t value);

/// The next text reads the separators again. For tests, which change them.
void forgetSeparators();

} // namespace Halden::SystemUtilities
