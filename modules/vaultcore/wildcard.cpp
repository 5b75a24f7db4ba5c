#include "vaultcore/wildcard.h"

namespace VaultCore
{

bool isPattern(std::wstring_view text)
{
    return text.find_first_of(L"*?") != std::wstring_view::npos;
}

bool matchesPattern(std::wstring_view name, std::wstring_view pattern)
{
    if (pattern == L"*.*")
        return true;
    std::size_t n = 0;
    std::size_t p = 0;
    std::size_t star = std::wstring_view::npos;
    std::size_t resume = 0;
    while (n < name.size())
    {
        if (p < pattern.size() && pattern[p] == L'*')
        {
            star = p++;
            resume = n;
            continue;
        }
        if (p < pattern.size() && (pattern[p] == L'?' || pattern[p] == name[n]))
        {
            ++p;
            ++n;
            continue;
        }
        if (star == std::wstring_view::npos)
            return false;
        // The latest star takes one character more; earlier stars need not be tried again.
        p = star + 1;
        n = ++resume;
    }
    return pattern.find_first_not_of(L'*', p) == std::wstring_view::npos;
}

} // namespace VaultCore
