#pragma once

#include <string.h>

namespace Platform
{

/// Adds a byte of what is typed, which may be a password: memory that the text outgrows is wiped before it is freed.
template <class String> void appendTyped(String& text, char byte)
{
    if (text.size() == text.capacity())
    {
        String larger;
        larger.reserve(2 * text.capacity());
        larger.assign(text.data(), text.size());
        explicit_bzero(text.data(), text.size());
        text.swap(larger);
    }
    text.push_back(byte);
}

} // namespace Platform
