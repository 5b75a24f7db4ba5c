#include "watched_document.h"

#include "applications/association.h"
#include "commands/watcher/open_document.h"
#include "platform/desktop.h"
#include "platform/platform.h"
#include "platform/threads.h"
#include "platform/utf8.h"

#include <chrono>
#include <cstdio>
#include <fstream>
#include <future>
#include <optional>
#include <stdexcept>
#include <thread>

namespace EndToEnd
{

namespace
{

constexpr std::chrono::minutes WatchLimit{1};
constexpr std::chrono::seconds NoteLimit{10};
constexpr wchar_t Extension[] = L".jobrunnertest";

std::wstring textOf(const Path& path)
{
    const std::u8string text = path.u8string();
    return Platform::fromUtf8({reinterpret_cast<const char*>(text.data()), text.size()});
}

WatchedDocument::Result watch(const std::wstring& document, const Path& log)
{
    // Where nobody has looked at the desktop yet, the first look starts its process, which is a child like any other.
    Platform::nativeSystem().desktop.enumWindows([](Platform::WindowHandle) { return false; });
    std::promise<WatchedDocument::Result> promise;
    auto future = promise.get_future();
    const auto jobThread = Platform::nativeSystem().threads.start(
        [&]
        {
            Platform::nativeSystem().threads.enterMultithreadedApartment();
            WatchedDocument::Result result;
            result.started = tickCount();
            result.opened = JobRunner::OpenDocumentAndWait(document);
            result.returned = tickCount();
            promise.set_value(result);
        });
    if (future.wait_for(WatchLimit) != std::future_status::ready)
    {
        std::fprintf(stderr, "the document is still being watched; the application has written down:\n%s",
                     contentOf(log).c_str());
        std::_Exit(1);
    }
    jobThread->wait();
    return future.get();
}

} // namespace

std::uint32_t tickCount()
{
    return Platform::nativeSystem().threads.tickCount();
}

WatchedDocument::WatchedDocument(const Path& name)
    : document_(folder_.addFile(Path("documents") / name, "Dear reader")),
      log_(folder_.addFile(Path("log") / "log.txt", ""))
{
}

std::wstring WatchedDocument::logOption() const
{
    return L" --log \"" + textOf(log_) + L'"';
}

WatchedDocument::Result WatchedDocument::open(const std::wstring& arguments)
{
    const Applications::Association association(Extension, arguments + logOption());
    return watch(textOf(document_), log_);
}

WatchedDocument::Result WatchedDocument::openUnknown()
{
    const Applications::Association nothing(Extension);
    return watch(textOf(document_), log_);
}

namespace
{

std::optional<std::uint32_t> lastNote(const Path& log, const std::string& what)
{
    std::optional<std::uint32_t> last;
    std::ifstream lines(log);
    std::string word;
    for (std::uint32_t ticks = 0; lines >> word >> ticks;)
        if (word == what)
            last = ticks;
    return last;
}

} // namespace

bool WatchedDocument::isNoted(const std::string& what) const
{
    return lastNote(log_, what).has_value();
}

std::uint32_t WatchedDocument::noted(const std::string& what) const
{
    const auto limit = std::chrono::steady_clock::now() + NoteLimit;
    while (!isNoted(what))
    {
        if (std::chrono::steady_clock::now() > limit)
            throw std::runtime_error("the application did not write down: " + what);
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return *lastNote(log_, what);
}

} // namespace EndToEnd
