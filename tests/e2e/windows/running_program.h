#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>
#include <windows.h>

namespace EndToEnd
{

using std::chrono::milliseconds;

inline constexpr milliseconds DefaultLimit{20000};
/// How long a condition is watched that is expected not to come true.
inline constexpr milliseconds BriefLimit{1500};

/// Asks again and again until the condition is true; false when the time is over.
bool waitUntil(const std::function<bool()>& condition, milliseconds limit = DefaultLimit);

/// A window of the program under test, seen from outside. Copies name the same window.
class Window
{
public:
    Window() = default;
    explicit Window(HWND handle) : handle_(handle) {}

    HWND handle() const { return handle_; }
    explicit operator bool() const { return handle_ != nullptr; }
    bool exists() const { return IsWindow(handle_) != FALSE; }
    bool isVisible() const { return IsWindowVisible(handle_) != FALSE; }
    std::wstring caption() const;
    /// The text of a dialog item, empty when there is no such item.
    std::wstring text(int item) const;
    bool isEnabled(int item) const;
    bool hasItem(int item) const { return GetDlgItem(handle_, item) != nullptr; }
    /// True when a child window has just this text.
    bool shows(const std::wstring& text) const;
    /// The texts of all child windows, one a line, for messages of failed tests.
    std::wstring allTexts() const;

    /// Clicks a button as an assistive program would; returns at once.
    void click(int item) const;
    /// Moves the pointer to the item and clicks it.
    void clickWithMouse(int item) const;
    /// Presses and releases a key in this window, after bringing it to the front.
    void press(WORD key) const;
    /// Asks the window to close, as its close box does.
    void close() const { PostMessageW(handle_, WM_CLOSE, 0, 0); }

private:
    HWND handle_ = nullptr;
};

/// A program that was started for a test; it is ended with the object if it still runs.
class RunningProgram
{
public:
    /// Starts the program with a command line of its quoted path and `arguments`. Throws when it does not start.
    RunningProgram(const std::filesystem::path& program, const std::wstring& arguments);
    ~RunningProgram();
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    /// The visible window of the program with this caption, once it is there; an empty one when the time is over or
    /// the program ends.
    Window window(const std::wstring& caption, milliseconds limit = DefaultLimit) const;
    /// The same for a caption that begins so.
    Window windowLike(const std::wstring& beginning, milliseconds limit = DefaultLimit) const;
    std::vector<Window> visibleWindows() const;
    /// The exit code; -1 when the program has not ended in time.
    int exitCode(milliseconds limit = DefaultLimit) const;
    bool isRunning() const;

private:
    Window firstWindow(const std::function<bool(const std::wstring&)>& fits, milliseconds limit) const;

    PROCESS_INFORMATION process_{};
};

/// `text` in quotes, for a command line.
std::wstring quoted(const std::filesystem::path& text);

} // namespace EndToEnd
