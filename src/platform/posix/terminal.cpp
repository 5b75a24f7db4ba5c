#include "platform/posix/terminal.h"

#include "platform/posix/terminal_modes.h"
#include "platform/posix/terminal_text.h"
#include "platform/posix/typed_bytes.h"
#include "platform/utf8.h"

#include <poll.h>
#include <string.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace Platform
{

namespace
{

using Clock = std::chrono::steady_clock;

constexpr char EraseLine[] = "\r\x1b[K";
constexpr char LineUp[] = "\x1b[1A";
constexpr int UsualColumns = 80;
/// A prompt waits at most this long for a thread that waits for a key.
constexpr std::chrono::milliseconds KeySlice{50};

} // namespace

bool Terminal::inputIsTerminal() const
{
    return isatty(input_);
}

bool Terminal::outputIsTerminal() const
{
    return isatty(output_);
}

void Terminal::drawStatus(const std::vector<std::wstring>& lines)
{
    const std::lock_guard guard(lock_);
    if (lines == status_)
        return;
    eraseStatus();
    status_ = lines;
    showStatus();
}

void Terminal::clearStatus()
{
    drawStatus({});
}

std::optional<wchar_t> Terminal::pollKey(std::chrono::milliseconds timeout)
{
    const auto end = Clock::now() + timeout;
    std::unique_lock guard(lock_);
    while (Clock::now() < end)
    {
        if (promptWanted() || polling_ || !ownsTerminal(input_))
        {
            changed_.wait_until(guard, end);
            continue;
        }
        polling_ = true;
        setInputMode(input_, InputMode::Keys);
        guard.unlock();
        const auto slice = std::min(KeySlice, std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()));
        pollfd descriptor{input_, POLLIN, 0};
        const bool ready =
            poll(&descriptor, 1, static_cast<int>(std::max(slice, std::chrono::milliseconds(0)).count())) > 0;
        const std::optional<wchar_t> key = ready ? readKey() : std::nullopt;
        guard.lock();
        polling_ = false;
        changed_.notify_all();
        if (key)
            return key;
        if (ready)
            changed_.wait_until(guard, std::min(end, Clock::now() + KeySlice));
    }
    return std::nullopt;
}

/// One key, when what there is to read is one character: an arrow key sends several, of which none may count.
std::optional<wchar_t> Terminal::readKey()
{
    std::array<char, 64> bytes{};
    const ssize_t length = read(input_, bytes.data(), bytes.size());
    if (length <= 0)
        return std::nullopt;
    const std::wstring keys = fromUtf8({bytes.data(), static_cast<std::size_t>(length)});
    return keys.size() == 1 || keys[0] != L'\x1b' ? std::optional(keys[0]) : std::nullopt;
}

void Terminal::openPrompt()
{
    std::unique_lock guard(lock_);
    if (promptDepth_ > 0 && promptOwner_ == std::this_thread::get_id())
    {
        ++promptDepth_;
        return;
    }
    ++waitingPrompts_;
    changed_.wait(guard, [this] { return promptDepth_ == 0 && !polling_; });
    --waitingPrompts_;
    eraseStatus();
    promptDepth_ = 1;
    promptOwner_ = std::this_thread::get_id();
    setInputMode(input_, InputMode::Lines);
}

void Terminal::closePrompt()
{
    const std::lock_guard guard(lock_);
    if (--promptDepth_ > 0)
        return;
    showStatus();
    changed_.notify_all();
}

void Terminal::write(const std::string& bytes)
{
    for (std::size_t done = 0; done < bytes.size();)
    {
        const ssize_t written = ::write(output_, bytes.data() + done, bytes.size() - done);
        if (written < 0 && errno != EINTR)
            return; // nobody is left to read it
        done += written > 0 ? static_cast<std::size_t>(written) : 0;
    }
}

void Terminal::eraseStatus()
{
    if (shownLines_ == 0)
        return;
    std::string bytes = EraseLine;
    for (std::size_t line = 1; line < shownLines_; ++line)
        bytes += std::string(LineUp) + EraseLine;
    write(bytes);
    shownLines_ = 0;
}

void Terminal::showStatus()
{
    if (status_.empty() || promptDepth_ > 0 || !outputIsTerminal())
        return;
    // A full line would wrap, and then erasing it would leave a part.
    const int room = columns() - 1;
    std::string bytes;
    for (const std::wstring& line : status_)
    {
        if (!bytes.empty())
            bytes += '\n';
        bytes += toUtf8(fitColumns(displayLine(line), room));
    }
    write(bytes);
    shownLines_ = status_.size();
}

int Terminal::columns() const
{
    winsize size{};
    return ioctl(output_, TIOCGWINSZ, &size) == 0 && size.ws_col > 1 ? size.ws_col : UsualColumns;
}

std::optional<std::wstring> Terminal::readLine(const std::wstring& prompt, bool hidden)
{
    const bool hiding = hidden && ownsTerminal(input_);
    if (hiding)
        setInputMode(input_, InputMode::Hidden);
    write(toUtf8(displayText(prompt)));
    std::string typed;
    const bool given = readBytes(typed);
    if (hiding)
        setInputMode(input_, InputMode::Lines);
    if (!given || !inputIsTerminal())
        write("\n");
    if (!given)
        return std::nullopt;
    std::optional<std::wstring> line(fromUtf8(typed));
    explicit_bzero(typed.data(), typed.size());
    return line;
}

/// Reads byte by byte, so that nothing of the next line is taken away from whoever reads it. False at the end of the
/// input. What is typed is nowhere but in `line`, whose owner wipes it.
bool Terminal::readBytes(std::string& line)
{
    while (true)
    {
        char byte = 0;
        const ssize_t length = read(input_, &byte, 1);
        if (length < 0 && errno == EINTR)
            continue;
        if (length <= 0 && line.empty())
            return false;
        if (length <= 0 || byte == '\n')
            break;
        appendTyped(line, byte);
    }
    if (line.ends_with('\r'))
        line.pop_back();
    return true;
}

Terminal::Prompt::Prompt(Terminal& terminal) : terminal_(terminal)
{
    terminal_.openPrompt();
}

Terminal::Prompt::~Prompt()
{
    terminal_.closePrompt();
}

void Terminal::Prompt::print(const std::wstring& text)
{
    terminal_.write(toUtf8(displayText(text)));
}

std::optional<std::wstring> Terminal::Prompt::readLine(const std::wstring& prompt)
{
    return terminal_.readLine(prompt, false);
}

std::optional<std::wstring> Terminal::Prompt::readHidden(const std::wstring& prompt)
{
    return terminal_.readLine(prompt, true);
}

Terminal& terminal()
{
    static Terminal instance(STDIN_FILENO, STDOUT_FILENO);
    return instance;
}

} // namespace Platform
