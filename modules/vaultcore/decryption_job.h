#pragma once

#include "vaultcore/content_digest.h"
#include "vaultcore/key_search.h"
#include "vaultcore/list_job.h"
#include "vaultcore/temporary_files.h"
#include "vaultcore/work_ahead.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace VaultCore
{

/// What a decryption is to do.
struct DecryptionOrder
{
    /// Folder for the results; empty: beside each encrypted file.
    std::wstring path;
    bool deletesEncrypted = false;
    IPasswordProvider* provider = nullptr;
};

/// Decrypts each encrypted file of a list into a file with the name and times of the source.
/// - In folders the files that end in ".zel" are taken. A file that an entry or a pattern names is taken whatever its
///   name is, and is a failed file when it is not encrypted. Links are left out in folders and refused as entries.
/// - A self-extracting package is unpacked: all the files in it, under their own names, into the same folder.
/// - The name from inside the file is reduced to one without a folder and without what is no part of a name here; when
///   nothing is left, it is the encrypted file's own without ".zel".
/// - The result is written under a temporary name, flushed, and given its own name, which never replaces a file, once
///   the whole content has been authenticated. Only then the encrypted file is deleted.
/// - Before the encrypted file is deleted, the result is read back under its final name and has to hold what was
///   decrypted.
/// - Progress counts the bytes of the encrypted file: (0, size), every piece, and (size, size) once the result stands;
///   with a deletion to come, writing counts as the first half and reading back as the second. A progress answer of 0
///   stops the job: the temporary file or the result goes and the encrypted file stays. Without a deletion to come, a
///   result that stands is kept.
/// - As soon as a key fits, small files that it opens are decrypted several at a time and ahead of their turn
///   (`WorkAhead`); what they report when it comes is the same. Results whose turn does not come are removed again.
/// - A file that succeeds is finished with the path of its result as text; a package with that of the folder that its
///   files are in, which ends with a separator.
/// - An encrypted file that cannot be removed is asked about like any failure; repeat tries the removal again, and when
///   it is given up, both files stay.
class DecryptionJob final : private IListWork, private IResultMaker
{
public:
    DecryptionJob(IFileSystem& files, const EventReceivers& events, DecryptionOrder order);

    /// Returns when the last callback has returned. What a callback other than the provider throws passes through.
    void run(const std::vector<std::wstring>& entries) { job_.run(entries, *this); }

private:
    /// One file under work.
    struct Work final : ResultWork
    {
        Place encrypted;
        FileInfo info;
        std::wstring name;
        /// Of the target, for the questions; empty before it is known.
        std::wstring targetName;
        /// Where the result is, once it stands. Never empty then: an empty text would stand for no result.
        std::wstring resultName;
        /// Of the content, when the result is to be read back.
        std::optional<ContentDigest> digest;
        /// A package has many results, which were read back one by one.
        bool isPackage = false;
        /// Its turn has not come: nothing is asked or reported yet.
        bool ahead = false;
        /// What is to be reported then.
        std::vector<std::uint64_t> parts;
    };

    void comingUp(std::span<const JobItem> items) override;
    void workOnFile(JobItem& item) override;
    void workOnFolder(const JobItem&) override {}
    void leave(const JobItem&) override {}
    void end() override { ahead_.takeBackRest(); }

    std::unique_ptr<ResultWork> make(const JobItem& item) override;
    void check(ResultWork& work) override;
    void takeBack(ResultWork& result) override;

    static std::unique_ptr<Work> workOf(const JobItem& item);
    void decrypt(Work& work);
    void produce(Work& work);
    void unlock(ContainerReader& reader, const Work& work);
    void chooseTarget(Work& work, const ContainerDetails& details);
    Place targetFolder(const Place& encrypted);
    std::unique_ptr<INewFile> createResult(const Work& work);
    void writeResult(Work& work, IReadFile& file);
    void compare(Work& work);
    void finishResult(Work& work);
    void removeEncrypted(const Work& work);
    void reportPart(Work& work, std::uint64_t done, bool readingBack);
    void reportShown(const Work& work, std::uint64_t shown);
    bool unpackPackage(Work& work, IReadFile& file);

    IFileSystem& files_;
    DecryptionOrder order_;
    JobReports reports_;
    ListJob job_;
    TemporaryFiles temporaries_;
    KeySearch keys_;
    WorkAhead ahead_;
    /// Of the file whose turn is next; null when it is to be worked on by itself.
    std::unique_ptr<ResultWork> ready_;
};

} // namespace VaultCore
