#include "platform/path_text.h"
#include "platform/posix/concerns.h"
#include "platform/posix/exclusive_open.h"
#include "platform/posix/file_search.h"
#include "platform/posix/handle_table.h"
#include "platform/utf8.h"

#include <sys/inotify.h>
#include <sys/stat.h>

namespace Platform
{

namespace
{

constexpr wchar_t Separator = L'/';
constexpr std::uint32_t ErrorInvalidParameter = 87;

Handle fail(std::uint32_t error)
{
    posixHandles().setLastError(error);
    return InvalidHandle;
}

struct OpenFile : SystemObject
{
    explicit OpenFile(Descriptor descriptor) : descriptor_(std::move(descriptor)) {}

private:
    Descriptor descriptor_;
};

/// The events are never read, so that it stays signalled from the first one on.
struct ChangeNotification : SystemObject
{
    explicit ChangeNotification(Descriptor descriptor) : descriptor_(std::move(descriptor)) {}
    int descriptor() const override { return descriptor_.get(); }

private:
    Descriptor descriptor_;
};

/// What is still to be found; one thread reads it.
struct Search : SystemObject
{
    std::vector<FoundFile> files;
    std::size_t position = 0;
};

std::uint32_t eventsOf(std::uint32_t filter)
{
    std::uint32_t events = IN_ONLYDIR;
    if ((filter & ChangeFileName) != 0)
        events |= IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO;
    if ((filter & ChangeAttributes) != 0)
        events |= IN_ATTRIB;
    // What is written through mapped memory shows only when the file is closed.
    if ((filter & ChangeLastWrite) != 0)
        events |= IN_MODIFY | IN_CLOSE_WRITE;
    return events;
}

class PosixFiles : public Files
{
public:
    /// Only existing files are opened, and only for reading.
    Handle open(const std::wstring& path, std::uint32_t access, std::uint32_t share, std::uint32_t disposition,
                std::uint32_t) override
    {
        if (access != GenericRead || disposition != OpenExisting)
            return fail(ErrorInvalidParameter);
        const std::string name = toUtf8(path);
        OpenResult result = share == ShareNothing ? openAlone(name) : openForReading(name);
        if (result.error != 0)
            return fail(result.error);
        return handleTable().add(std::make_shared<OpenFile>(std::move(result.descriptor)));
    }

    /// A folder with all that is below it cannot be watched.
    Handle findFirstChange(const std::wstring& folder, bool subtree, std::uint32_t filter) override
    {
        if (subtree)
            return fail(ErrorInvalidParameter);
        Descriptor watching(inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
        if (!watching || inotify_add_watch(watching.get(), toUtf8(folder).c_str(), eventsOf(filter)) < 0)
            return fail(ErrorFileNotFound);
        return handleTable().add(std::make_shared<ChangeNotification>(std::move(watching)));
    }
    void findCloseChange(Handle handle) override { handleTable().remove(handle); }

    Handle findFirst(const std::wstring& pattern, FoundFile& found) override
    {
        const auto search = std::make_shared<Search>();
        search->files = filesLike(pattern);
        if (search->files.empty())
            return fail(ErrorFileNotFound);
        found = search->files[search->position++];
        return handleTable().add(search);
    }
    bool findNext(Handle handle, FoundFile& found) override
    {
        const auto search = handleTable().find<Search>(handle);
        if (!search || search->position == search->files.size())
            return false;
        found = search->files[search->position++];
        return true;
    }
    void findClose(Handle search) override { handleTable().remove(search); }

    bool modificationTime(const std::wstring& path, std::int64_t& seconds) override
    {
        struct stat status
        {
        };
        if (stat(toUtf8(path).c_str(), &status) != 0)
            return false;
        seconds = status.st_mtim.tv_sec;
        return true;
    }

    bool matches(const std::wstring& file, const std::wstring& pattern) override
    {
        return matchesPatternText(file, pattern);
    }
    std::wstring fileName(const std::wstring& path) override { return fileNameText(path, Separator); }
    std::wstring removeFileSpec(const std::wstring& path) override { return removeFileSpecText(path, Separator); }
    std::wstring append(const std::wstring& path, const std::wstring& more) override
    {
        return appendPathText(path, more, Separator);
    }
};

} // namespace

Files& posixFiles()
{
    static PosixFiles files;
    return files;
}

} // namespace Platform
