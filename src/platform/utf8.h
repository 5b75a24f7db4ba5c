#pragma once

#include <string>
#include <string_view>

namespace Platform
{

/// UTF-8 at the edges of the program. A byte that is not part of valid UTF-8 becomes the lone surrogate U+DC80 to
/// U+DCFF, which holds the byte in its low eight bits, so that every file name survives the way there and back.
std::wstring fromUtf8(std::string_view text);
/// The way back: such a lone surrogate becomes its byte, any other value that is no character becomes U+FFFD.
std::string toUtf8(std::wstring_view text);

} // namespace Platform
