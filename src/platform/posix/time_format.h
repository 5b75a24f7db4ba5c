#pragma once

#include <string>

namespace Platform
{

/// A format of `strftime` for a date or a time, such as "%d.%m.%Y", as a format picture such as "dd.MM.yyyy".
/// `twelveHours` is what "%r" stands for. Letters that would be fields of a picture are put into quotes; a field that
/// pictures do not have is left out.
std::wstring pictureOfFormat(const std::wstring& format, const std::wstring& twelveHours);

/// What parts groups of three digits where the user's notation names nothing: the comma, or the point where the comma
/// stands before the decimals.
std::wstring groupSeparator(const std::wstring& named, const std::wstring& decimal);

} // namespace Platform
