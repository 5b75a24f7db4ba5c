#pragma once

#include <string>
#include <vector>

namespace Platform
{

/// How the desktop opens a document. Paths are full, text is as the system has it.
struct DefaultApplication
{
    std::string program;                ///< empty when no application is known for the document
    std::vector<std::string> arguments; ///< the first one names the program
    std::string folder;                 ///< where the application wants to work; may be empty
};

/// Asks the tools of the desktop, which takes a good part of a second. `document` is the full path of a file.
DefaultApplication defaultApplicationOf(const std::string& document);

} // namespace Platform
