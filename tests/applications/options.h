#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Applications
{

/// The command line: MODE [MILLISECONDS] [--stay MILLISECONDS] [--open MILLISECONDS] [--front] [--serve] [--log FILE]
/// [DOCUMENT].
struct Options
{
    std::wstring mode;
    std::uint32_t time = 0; ///< how long the document is held or read
    std::uint32_t stay = 0; ///< how long the program runs on behind that
    std::uint32_t open = 0; ///< how long the window of a handed-over document stays open
    bool front = false;     ///< whether such a window comes to the front
    bool serve = false;
    std::wstring log;
    std::wstring document;
};

/// Without the name of the program. Nothing when they make no sense.
std::optional<Options> readOptions(const std::vector<std::wstring>& arguments);

bool isNumber(const std::wstring& text);
/// 0 for what is no number.
std::uint32_t number(const std::wstring& text);

} // namespace Applications
