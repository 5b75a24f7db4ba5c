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

/// Opens the folder that holds the name, going from folder to folder, so that its path may be of any length. Links in
/// `root` are followed, links in `below` are refused.
Descriptor openParent(const Place& place);

/// Renames inside a folder; never replaces another file.
void renameIn(int folder, const NativeText& from, const NativeText& to);

/// Opens the file for overwriting, and for nobody else.
std::unique_ptr<IWipeFile> openWipeFile(const Place& place);

} // namespace VaultCore
