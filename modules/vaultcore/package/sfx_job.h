#pragma once

#include "vaultcore/encryption_job.h"
#include "vaultcore/package/package_files.h"
#include "vaultcore/package/package_naming.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace VaultCore
{

/// What the making of a package is to do.
struct SfxOrder
{
    /// Without extra text, which a package has none of.
    EncryptionOrder encryption;
    /// UTF-8.
    std::string comment;
    /// Path of the program that becomes the package's start.
    std::wstring program;
};

/// Encrypts the files of a list into one self-extracting package: "NAME.exe" beside the first entry, after which it is
/// named. As `EncryptionJob` in all that is not told here.
/// - The package is one piece of work. Progress counts the bytes of all files together, and every file is finished
///   when the package is: with it, or with its failure. A file that fails alone is left out of the package.
/// - It is written under a temporary name, flushed, and given its own name, which never replaces a file. When it
///   cannot be completed, or the job is stopped before, nothing of it stays and the sources stay as they are.
/// - Before the first source goes, the whole package is read back under its final name. Only sources that are in it go.
/// - Empty folders and links are not packed. A job without a file that could be packed leaves no package.
class SfxJob final : private IListWork
{
public:
    /// `order` has to outlive the job.
    SfxJob(IFileSystem& files, const EventReceivers& events, const SfxOrder& order);

    /// Returns when the last callback has returned. What a callback throws passes through.
    void run(const std::vector<std::wstring>& entries) { job_.run(entries, *this); }

private:
    /// Adds what is behind already, so that the files of a package count as one.
    class Total final : public IFileProgressEvents
    {
    public:
        explicit Total(IFileProgressEvents* to) : to_(to) {}
        int OnFileProgress(std::uint64_t done, std::uint64_t) override;
        std::uint64_t before = 0;
        std::uint64_t total = 0;

    private:
        IFileProgressEvents* to_;
    };

    /// One file of the list.
    struct Item
    {
        std::wstring name;
        FileInfo found;
        std::string packedName;
        Source source;
        /// Of the content, or with a public key of the container.
        ContentDigest::Value digest{};
        std::optional<FileFailure> failure;
    };

    /// The package under work.
    struct Package
    {
        Place target;
        std::wstring targetName;
        std::unique_ptr<INewFile> file;
        std::optional<PackageFileSink> sink;
        std::optional<PackageWriter> writer;
        std::uint64_t programSize = 0;
        ContentDigest::Value program{};
        /// Of all behind the last file.
        ContentDigest::Value end{};
        bool complete = false;
        FileInfo result;
    };

    void workOnFile(JobItem& item) override;
    void workOnFolder(const JobItem&) override {}
    void leave(const JobItem&) override {}
    void end() override;

    void start(const Place& target);
    void copyProgram(Package& package);
    void add(Item& item);
    void copyContent(IReadFile& from, ContainerWriter& to, Item& item);
    std::optional<FileFailure> finishPackage();
    void writeEnd();
    FileInfo likeAll() const;
    void verify();
    void verifyProgram(IReadFile& file);
    void verifyContent(IPackageSource& source);
    void verifyBytes(IReadFile& file);
    ContentDigest::Value digestOf(IReadFile& file, std::uint64_t size);
    void removeSources();
    void removeSource(Item& item);
    void takeBack();
    void report(std::uint64_t done, bool readingBack);
    bool sourceGoes() const;
    bool keyDecrypts() const;
    bool hasFiles() const { return package_ && package_->writer && package_->writer->count() > 0; }

    IFileSystem& files_;
    const SfxOrder& order_;
    Total destiny_;
    JobReports reports_;
    ListJob job_;
    TemporaryFiles temporaries_;
    SourceRemoval removal_;
    PackageNaming naming_;
    std::unique_ptr<EncryptionSession> session_;
    std::optional<Package> package_;
    std::vector<Item> items_;
    SecureBytes chunk_;
    std::uint64_t total_ = 0;
    /// Of the files that are behind.
    std::uint64_t done_ = 0;
};

} // namespace VaultCore
