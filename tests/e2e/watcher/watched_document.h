#pragma once

#include "scenarios/sample_folder.h"

#include <cstdint>
#include <string>

namespace EndToEnd
{

/// A document of the test application, alone in a folder of its own, and a log that the application writes elsewhere.
class WatchedDocument
{
public:
    /// How a watch ended.
    struct Result
    {
        bool opened = false;
        std::uint32_t started = 0;  ///< tick count
        std::uint32_t returned = 0; ///< tick count
    };

    explicit WatchedDocument(const Path& name = "a letter [1].jobrunnertest");

    const Path& path() const { return document_; }
    /// Puts another file beside the document.
    void addNeighbour(const Path& name) { folder_.addFile(Path("documents") / name); }

    /// Opens it with the application, which gets `arguments`, and waits as the double-click job does, on a thread of
    /// the same kind. Ends the test program when that takes longer than a minute.
    Result open(const std::wstring& arguments);
    /// The same with no application for documents of this kind.
    Result openUnknown();

    /// ` --log FILE`, for a command line.
    std::wstring logOption() const;
    /// Whether the application has written this down by now.
    bool isNoted(const std::string& what) const;
    /// When it has written it down last, as a tick count. Waits ten seconds; throws when nothing comes.
    std::uint32_t noted(const std::string& what) const;

private:
    SampleFolder folder_;
    Path document_;
    Path log_;
};

/// The tick count of this moment.
std::uint32_t tickCount();

} // namespace EndToEnd
