#include "applications/application.h"

#include "applications/win32/dispatch.h"

#include <windows.h>

#include <array>
#include <functional>
#include <stdexcept>

namespace Applications
{

namespace
{

constexpr std::uint32_t Patience = 5000;
constexpr std::uint32_t Pause = 10;

/// An open file. Only one that nobody shares is a held document.
class OpenFile : public HeldDocument
{
public:
    OpenFile(const std::wstring& path, DWORD access, DWORD share, DWORD disposition)
        : handle_(CreateFileW(path.c_str(), access, share, nullptr, disposition, 0, nullptr))
    {
    }
    ~OpenFile() override
    {
        if (*this)
            CloseHandle(handle_);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    explicit operator bool() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return handle_; }

private:
    HANDLE handle_;
};

/// Somebody may look at the document, and keeps it from being opened for a moment.
void tryUntil(const std::function<bool()>& attempt)
{
    const std::uint32_t start = tickCount();
    while (!attempt())
    {
        if (tickCount() - start > Patience)
            throw std::runtime_error("the document cannot be had");
        Sleep(Pause);
    }
}

class RealMainWindow : public MainWindow
{
public:
    explicit RealMainWindow(const std::wstring& title)
        : window_(CreateWindowExW(0, L"STATIC", title.c_str(), WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 100, 400, 200,
                                  nullptr, nullptr, nullptr, nullptr))
    {
        SetForegroundWindow(window_);
    }
    ~RealMainWindow() override { DestroyWindow(window_); }

private:
    HWND window_;
};

} // namespace

std::uint32_t tickCount()
{
    return GetTickCount();
}

void dispatchAll()
{
    for (MSG message{}; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);)
    {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

void wait(std::uint32_t milliseconds)
{
    const std::uint32_t start = tickCount();
    for (std::uint32_t gone = 0; gone < milliseconds; gone = tickCount() - start)
    {
        dispatchAll();
        MsgWaitForMultipleObjects(0, nullptr, FALSE, milliseconds - gone, QS_ALLINPUT);
    }
    dispatchAll();
}

std::unique_ptr<HeldDocument> hold(const std::wstring& document)
{
    std::unique_ptr<OpenFile> file;
    tryUntil(
        [&]
        {
            file = std::make_unique<OpenFile>(document, GENERIC_READ | GENERIC_WRITE, 0, OPEN_EXISTING);
            return static_cast<bool>(*file);
        });
    return file;
}

std::string read(const std::wstring& document)
{
    std::string content;
    tryUntil(
        [&]
        {
            constexpr DWORD Share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
            const OpenFile file(document, GENERIC_READ, Share, OPEN_EXISTING);
            std::array<char, 4096> buffer{};
            for (DWORD size = 1; file && ReadFile(file.get(), buffer.data(), 4096, &size, nullptr) && size > 0;)
                content.append(buffer.data(), size);
            return static_cast<bool>(file);
        });
    return content;
}

void replace(const std::wstring& document, const std::wstring& file)
{
    tryUntil([&] { return MoveFileExW(file.c_str(), document.c_str(), MOVEFILE_REPLACE_EXISTING) != FALSE; });
}

void remove(const std::wstring& document)
{
    tryUntil([&] { return DeleteFileW(document.c_str()) != FALSE; });
}

void write(const std::wstring& path, const std::string& content)
{
    const OpenFile file(path, GENERIC_WRITE, 0, CREATE_ALWAYS);
    DWORD written = 0;
    if (!file || !WriteFile(file.get(), content.data(), static_cast<DWORD>(content.size()), &written, nullptr))
        throw std::runtime_error("the file cannot be written");
}

void append(const std::wstring& path, const std::string& line)
{
    tryUntil(
        [&]
        {
            const OpenFile file(path, FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_ALWAYS);
            DWORD written = 0;
            return file && WriteFile(file.get(), line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
        });
}

std::unique_ptr<MainWindow> showMainWindow(const std::wstring& title)
{
    return std::make_unique<RealMainWindow>(title);
}

void startSelf(const std::vector<std::wstring>& arguments)
{
    std::array<wchar_t, 1024> program{};
    GetModuleFileNameW(nullptr, program.data(), 1024);
    std::wstring line = L'"' + std::wstring(program.data()) + L'"';
    for (const std::wstring& argument : arguments)
        line += L" \"" + argument + L'"';
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(program.data(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process))
        throw std::runtime_error("the program does not start");
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
}

void crash()
{
    // Nobody is asked about it.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    RaiseException(EXCEPTION_ACCESS_VIOLATION, EXCEPTION_NONCONTINUABLE, 0, nullptr);
    std::terminate();
}

} // namespace Applications
