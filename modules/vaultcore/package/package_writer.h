#pragma once

#include "vaultcore/container/container.h"
#include "vaultcore/package/package_format.h"

#include <functional>

namespace VaultCore
{

/// Where a package's bytes go. Throws on failure; what it throws passes through the writer.
class IPackageSink : public IByteSink
{
public:
    /// Drops all that was written behind the first `size` bytes.
    virtual void cutTo(std::uint64_t size) = 0;
};

/// Writes one package: the program, the files, the end. Not for two threads at once.
class PackageWriter
{
public:
    /// The program has been written to the sink already. All have to outlive the writer; the riddle (UTF-8) is the same
    /// for all containers.
    PackageWriter(IPackageSink& sink, std::uint64_t programSize, EncryptionSession& session, std::string riddle);

    /// Adds a file. `copy` gives its content to the container; `details.name` is the name inside the package. Whatever
    /// is thrown on the way, nothing of the file stays in the package, and others can be added. Throws
    /// `ContainerFailure` with `AbsurdParameters` for a file that the package has no room for.
    void add(const ContainerDetails& details, const std::function<void(ContainerWriter&)>& copy);
    std::size_t count() const { return entries().size(); }
    const std::vector<PackageEntry>& entries() const { return directory_.entries; }
    /// Bytes of program and files.
    std::uint64_t size() const { return end_; }
    /// Directory, comment (UTF-8) and trailer. May be tried again after a failure.
    void finish(const std::string& comment);

private:
    class Counter;

    void checkRoom(const ContainerDetails& details) const;
    void writeEnd(const std::string& comment);

    IPackageSink& sink_;
    EncryptionSession& session_;
    std::string riddle_;
    Directory directory_;
    /// End of what is complete.
    std::uint64_t end_;
    /// Of the directory, so far.
    std::size_t directorySize_ = 64;
};

} // namespace VaultCore
