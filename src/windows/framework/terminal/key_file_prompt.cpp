#include "windows/framework/terminal/key_file_prompt.h"

#include "platform/utf8.h"
#include "windows/framework/terminal/terminal_dialog.h"

#include <filesystem>

namespace JobRunner
{

namespace
{

namespace fs = std::filesystem;

constexpr const char* Extension = ".zelkey";

bool isFile(const fs::path& path)
{
    std::error_code error;
    return fs::exists(path, error) && !fs::is_directory(path, error);
}

std::wstring fullPath(const fs::path& path)
{
    std::error_code error;
    const fs::path full = fs::absolute(path, error);
    return Platform::fromUtf8(error ? path.native() : full.native());
}

/// Empty when there is no such file.
std::wstring findKeyFile(const std::wstring& typed)
{
    fs::path path(Platform::toUtf8(typed));
    if (isFile(path))
        return fullPath(path);
    if (path.has_extension() || !path.has_filename())
        return {};
    path += Extension;
    return isFile(path) ? fullPath(path) : std::wstring();
}

} // namespace

std::wstring askForKeyFile(Platform::Terminal& terminal)
{
    TerminalDialog dialog(terminal);
    while (const std::optional<std::wstring> line = dialog.readLine(L"Path of the key file (Enter for none): "))
    {
        if (line->empty())
            return {};
        std::wstring found = findKeyFile(*line);
        if (!found.empty())
            return found;
        dialog.printLine(L"There is no such file: " + *line);
    }
    return {};
}

} // namespace JobRunner
