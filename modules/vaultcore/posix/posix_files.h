#pragma once

#include "vaultcore/file_failure.h"
#include "vaultcore/file_system.h"

#include <sys/stat.h>
#include <utility>

namespace VaultCore
{

/// Owns a file descriptor.
class Descriptor
{
public:
    Descriptor() = default;
    explicit Descriptor(int value) : value_(value) {}
    Descriptor(Descriptor&& other) noexcept : value_(std::exchange(other.value_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(value_, other.value_);
        return *this;
    }
    ~Descriptor();
    int get() const { return value_; }

private:
    int value_ = -1;
};

/// The one place where error numbers become the engine's causes.
[[noreturn]] void throwError(int error);
/// Throws for a result of -1, with `errno`.
int checked(int result);

struct stat statOf(int descriptor);
FileInfo infoOf(const struct stat& status);

/// 100 ns since 1601, the engine's times.
std::uint64_t ticksOf(const struct timespec& time);
struct timespec timeOf(std::uint64_t ticks);

/// Opens the folder that holds the name, going from folder to folder, so that its path may be of any length. Links in
/// `root` are followed, links in `below` are refused. `FolderExchanged` when `root` leads elsewhere by now.
Descriptor openParent(const Place& place);

/// Renames inside a folder; never replaces another file.
void renameIn(int folder, const NativeText& from, const NativeText& to);

/// Is the name still that of the open file?
bool hasName(int folder, const NativeText& name, int file);
/// Throws when it is not.
void checkName(int folder, const NativeText& name, int file);
/// Gives a file a second name; throws when there is such a name already. Then takes the first one away.
void linkIn(int folder, const NativeText& from, const NativeText& to);
/// Returns when the device has the names in a folder.
void flushFolder(int folder);

enum class Use
{
    /// Another program may write to the file.
    Writing,
    /// Another program has the file open for whatever it be.
    Any,
};
/// Throws `InUse`. The file is open for reading alone to find `Writing`, for writing to find `Any`. Where the system
/// does not tell, nobody is found.
void checkNotInUse(int file, Use use);

/// Opens the file for overwriting, and for nobody else.
std::unique_ptr<IWipeFile> openWipeFile(const Place& place);
std::unique_ptr<IReadFile> openReadFile(const Place& place);
std::unique_ptr<INewFile> createNewFile(const Place& place);
void flushNewFiles(const std::vector<INewFile*>& files);
bool removeAbandonedFile(const Place& place);

} // namespace VaultCore
