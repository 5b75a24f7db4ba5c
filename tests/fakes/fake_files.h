#pragma once

#include "fakes/fake_handles.h"
#include "platform/files.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace Fakes
{

struct FakeFile
{
    bool isFolder = false;
    bool isLocked = false;
    /// What opening it fails with, whatever else it is; 0 for nothing.
    std::uint32_t error = 0;
    std::int64_t modified = 0;
};

/// Files in memory. A folder is there when a file is in it; one without files has an entry of its own. Every change
/// that a test makes through `change` or `remove` signals the notifications. Logs "open PATH", "findFirstChange FOLDER
/// FILTER" (and "subtree"), "findCloseChange NAME", "findFirst PATTERN" and "findClose". One thread at a time.
class FakeFiles : public Platform::Files
{
public:
    FakeFiles(CallLog& log, FakeHandles& handles, wchar_t separator)
        : log_(log), handles_(handles), separator_(separator)
    {
    }

    /// By their paths. An entry may be made and read at any time.
    std::map<std::wstring, FakeFile> files;
    FakeFile& change(const std::wstring& path);
    void remove(const std::wstring& path);

    /// Called by each `open`, before it looks.
    std::function<void()> onOpen;
    /// Runs when a notification is closed.
    std::function<void()> onCloseChange;
    /// While true, "*" finds nothing in any folder.
    bool unlistedFolders = false;
    /// When there is one, it is given in place of a notification.
    std::optional<Platform::Handle> insteadOfNotification;

    Platform::Handle open(const std::wstring& path, std::uint32_t access, std::uint32_t share,
                          std::uint32_t disposition, std::uint32_t flags) override;
    Platform::Handle findFirstChange(const std::wstring& folder, bool subtree, std::uint32_t filter) override;
    void findCloseChange(Platform::Handle handle) override;
    Platform::Handle findFirst(const std::wstring& pattern, Platform::FoundFile& found) override;
    bool findNext(Platform::Handle search, Platform::FoundFile& found) override;
    void findClose(Platform::Handle search) override;
    bool modificationTime(const std::wstring& path, std::int64_t& seconds) override;
    bool matches(const std::wstring& file, const std::wstring& pattern) override;
    std::wstring fileName(const std::wstring& path) override;
    std::wstring removeFileSpec(const std::wstring& path) override;
    std::wstring append(const std::wstring& path, const std::wstring& more) override;

private:
    std::uint32_t openError(const std::wstring& path) const;

    CallLog& log_;
    FakeHandles& handles_;
    const wchar_t separator_;
    int changes_ = 0;
    std::map<Platform::Handle, std::vector<Platform::FoundFile>> searches_; ///< what is still to be found
};

} // namespace Fakes
