#pragma once

#include "platform/files.h"

#include <vector>

namespace Platform
{

/// What a search for `pattern` finds, sorted by name. A '*' or '?' in the last part stands for other characters unless
/// there is a file of just that name, as there can be on this system. Other names mean themselves, letter by letter.
std::vector<FoundFile> filesLike(const std::wstring& pattern);

} // namespace Platform
