#include "platform/narrow_text.h"

#include "platform/utf8.h"

namespace Platform
{

std::wstring widenThreadText(std::string_view text)
{
    return fromUtf8(text);
}

std::string narrowThreadText(std::wstring_view text)
{
    return toUtf8(text);
}

} // namespace Platform
