#include "platform/path_text.h"
#include "platform/posix/concerns.h"
#include "platform/utf8.h"

#include <limits.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <fstream>

namespace Platform
{

namespace
{

constexpr std::size_t DirectoryLength = 1024;
constexpr std::uint32_t CompactLength = 1024;
constexpr wchar_t Separator = L'/';

class PosixShell : public Shell
{
public:
    std::vector<std::wstring> commandLineArguments() override
    {
        // The system ends each argument with a null.
        std::ifstream commandLine("/proc/self/cmdline", std::ios::binary);
        std::vector<std::wstring> arguments;
        for (std::string argument; std::getline(commandLine, argument, '\0');)
            arguments.push_back(fromUtf8(argument));
        return arguments;
    }

    SystemVersion version() override { return {}; }

    std::wstring currentDirectory() override
    {
        std::array<char, PATH_MAX> buffer{};
        if (!getcwd(buffer.data(), buffer.size()))
            return {};
        std::wstring directory = fromUtf8(buffer.data());
        return directory.size() < DirectoryLength ? directory : std::wstring();
    }

    std::wstring combinePath(const std::wstring& folder, const std::wstring& file) override
    {
        return combinePathText(folder, file, Separator);
    }

    std::wstring compactPath(const std::wstring& path, std::uint32_t size) override
    {
        return compactPathText(path, std::min(size, CompactLength), Separator);
    }

    bool deleteFile(const std::wstring& path) override { return unlink(toUtf8(path).c_str()) == 0; }

    WindowHandle foregroundWindow() override { return nullptr; }
    std::uint32_t windowThread(WindowHandle) override { return 0; }
    void attachThreadInput(std::uint32_t, std::uint32_t, bool) override {}
    void setWindowPosition(WindowHandle, WindowHandle, std::uint32_t) override {}
    void setForegroundWindow(WindowHandle) override {}
};

} // namespace

Shell& posixShell()
{
    static PosixShell shell;
    return shell;
}

} // namespace Platform
