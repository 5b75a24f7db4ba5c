#include "applications/release_log.h"

#include "applications/application.h"

namespace Applications
{

void note(const std::wstring& log, const std::string& what)
{
    const std::uint32_t now = tickCount();
    if (!log.empty())
        append(log, what + ' ' + std::to_string(now) + '\n');
}

} // namespace Applications
