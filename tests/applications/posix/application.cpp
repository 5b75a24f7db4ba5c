#include "applications/application.h"

#include "platform/platform.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/start_program.h"
#include "platform/threads.h"
#include "platform/utf8.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace Applications
{

namespace
{

constexpr mode_t OwnerOnly = 0600;

Platform::Descriptor openFile(const std::wstring& path, int flags)
{
    Platform::Descriptor file(open(Platform::toUtf8(path).c_str(), flags | O_CLOEXEC, OwnerOnly));
    if (!file)
        throw std::runtime_error("the file cannot be opened");
    return file;
}

void writeAll(const Platform::Descriptor& file, const std::string& content)
{
    if (::write(file.get(), content.data(), content.size()) != static_cast<ssize_t>(content.size()))
        throw std::runtime_error("the file cannot be written");
}

/// Others can open it all the same, but they can see that it is open.
class OpenDocument : public HeldDocument
{
public:
    explicit OpenDocument(const std::wstring& path) : file_(openFile(path, O_RDWR)) {}

private:
    Platform::Descriptor file_;
};

} // namespace

std::uint32_t tickCount()
{
    return Platform::nativeSystem().threads.tickCount();
}

void wait(std::uint32_t milliseconds)
{
    Platform::nativeSystem().threads.sleep(milliseconds);
}

std::unique_ptr<HeldDocument> hold(const std::wstring& document)
{
    return std::make_unique<OpenDocument>(document);
}

std::string read(const std::wstring& document)
{
    const Platform::Descriptor file = openFile(document, O_RDONLY);
    std::string content;
    std::array<char, 4096> buffer{};
    for (ssize_t size = 1; size > 0;)
    {
        size = ::read(file.get(), buffer.data(), buffer.size());
        content.append(buffer.data(), size > 0 ? static_cast<std::size_t>(size) : 0);
    }
    return content;
}

void replace(const std::wstring& document, const std::wstring& file)
{
    if (std::rename(Platform::toUtf8(file).c_str(), Platform::toUtf8(document).c_str()) != 0)
        throw std::runtime_error("the document cannot be replaced");
}

void remove(const std::wstring& document)
{
    if (unlink(Platform::toUtf8(document).c_str()) != 0)
        throw std::runtime_error("the document cannot be removed");
}

void write(const std::wstring& file, const std::string& content)
{
    writeAll(openFile(file, O_WRONLY | O_CREAT | O_TRUNC), content);
}

void append(const std::wstring& file, const std::string& line)
{
    writeAll(openFile(file, O_WRONLY | O_CREAT | O_APPEND), line);
}

std::unique_ptr<MainWindow> showMainWindow(const std::wstring&)
{
    return nullptr;
}

void startSelf(const std::vector<std::wstring>& arguments)
{
    const std::string program = std::filesystem::read_symlink("/proc/self/exe");
    std::vector<std::string> narrow{program};
    for (const std::wstring& argument : arguments)
        narrow.push_back(Platform::toUtf8(argument));
    if (Platform::startProgram(program, narrow) < 0)
        throw std::runtime_error("the program does not start");
}

void crash()
{
    // Nothing stays behind of it.
    const rlimit nothing{0, 0};
    setrlimit(RLIMIT_CORE, &nothing);
    std::signal(SIGSEGV, SIG_DFL);
    std::raise(SIGSEGV);
    std::abort();
}

} // namespace Applications
