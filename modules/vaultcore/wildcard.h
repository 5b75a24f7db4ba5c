#pragma once

#include <string_view>

namespace VaultCore
{

/// Does the text hold `*` or `?`?
bool isPattern(std::wstring_view text);

/// Answers as the Windows shell does: `*` stands for any characters, none included, the dot and a leading dot too; `?`
/// for exactly one; `*.*` for every name. Letters are compared as they stand.
bool matchesPattern(std::wstring_view name, std::wstring_view pattern);

} // namespace VaultCore
