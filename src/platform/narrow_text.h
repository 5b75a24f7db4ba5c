#pragma once

#include <string>
#include <string_view>

namespace Platform
{

/// A narrow text of the run-time library, such as the one of a standard exception, as wide text:
/// `MultiByteToWideChar` with `CP_THREAD_ACP`, UTF-8 on a system without code pages. Never fails; what stands for no
/// character comes out as the system shows it.
std::wstring widenThreadText(std::string_view text);

/// The way back: `WideCharToMultiByte` with `CP_THREAD_ACP`, UTF-8 on a system without code pages. Never fails; what
/// the code page lacks becomes what stands for it there, such as "?".
std::string narrowThreadText(std::wstring_view text);

} // namespace Platform
