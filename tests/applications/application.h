#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Applications
{

struct Options;

// What an application needs of its system.

/// Milliseconds of the clock that all processes of the system share.
std::uint32_t tickCount();
/// Waits as an application does that answers its user meanwhile.
void wait(std::uint32_t milliseconds);

/// A document that nobody else can open while this object lives.
class HeldDocument
{
public:
    virtual ~HeldDocument() = default;
};
/// Tries for five seconds, since others may look at the document; throws std::runtime_error behind that.
std::unique_ptr<HeldDocument> hold(const std::wstring& document);

/// All of it. Throws std::runtime_error when it cannot be had.
std::string read(const std::wstring& document);
/// Puts a file in the place of the document, in one step. Tries as `hold` does.
void replace(const std::wstring& document, const std::wstring& file);
/// Tries as `hold` does.
void remove(const std::wstring& document);
void write(const std::wstring& file, const std::string& content);
/// One line more at the end of a file, in one write.
void append(const std::wstring& file, const std::string& line);

/// A main window where there are windows, until the object ends.
class MainWindow
{
public:
    virtual ~MainWindow() = default;
};
std::unique_ptr<MainWindow> showMainWindow(const std::wstring& title);

/// Starts this program once more and does not wait.
void startSelf(const std::vector<std::wstring>& arguments);
/// Does what no program may.
[[noreturn]] void crash();

/// Becomes the running instance of an application that has but one, until the window of a document has closed and
/// `options.stay` has gone by; without `stay` for ever.
int serve(const Options& options);
/// Hands a document to the running instance. False when there is none.
bool handOver(const std::wstring& document);

} // namespace Applications
