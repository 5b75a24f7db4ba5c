#pragma once

#include <string>

namespace JobRunner
{

/// A failure of the start-up on the first thread. The entry point shows its text and exits with 1.
struct Exception
{
    std::wstring text;
};

} // namespace JobRunner
